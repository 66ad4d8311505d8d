// SPDX-License-Identifier: MIT

#ifndef TOOLS_STAGE_FAKE_PRINTERS_H_
#define TOOLS_STAGE_FAKE_PRINTERS_H_

#include <filesystem>
#include <string>
#include <string_view>

namespace stage {

// A printing system whose programs stand first on the PATH as long as the object lives: it has the
// printers Office and Studio, of which Studio is the usual one, and keeps what it is given.
class FakePrinters {
 public:
  FakePrinters();
  ~FakePrinters();
  FakePrinters(const FakePrinters&) = delete;
  FakePrinters& operator=(const FakePrinters&) = delete;

  // Has `lpstat` or `lp` run these lines of shell instead.  `$here` is the folder.
  void LetLpstat(std::string_view lines) { Install("lpstat", lines); }
  void LetLp(std::string_view lines) { Install("lp", lines); }

  // Takes all programs away, those of this computer included.
  void Uninstall();

  // The files into which `lp` writes its arguments, one a line, and the document.
  std::filesystem::path Arguments() const { return folder_ / "arguments"; }
  std::filesystem::path Document() const { return folder_ / "document"; }

 private:
  void Install(const char* program, std::string_view lines);

  std::filesystem::path folder_;
  const std::string path_;  // as it was
};

}  // namespace stage

#endif  // TOOLS_STAGE_FAKE_PRINTERS_H_
