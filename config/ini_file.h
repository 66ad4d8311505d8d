// SPDX-License-Identifier: MIT
//
// A profile file: sections in brackets, lines "key=value", comments after ";".  Names of
// sections and keys are compared without regard to case (ASCII).

#ifndef CONFIG_INI_FILE_H_
#define CONFIG_INI_FILE_H_

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "model/status.h"

namespace config {

// A settings file has a few hundred bytes: what is larger than this is another file.
inline constexpr std::uint64_t kLargestIniFile = std::uint64_t{1} << 20;

// The lines of a profile file.  Changing a value keeps every other byte of the file: other
// lines, comments, order, the key's own spelling and spacing, the line ends.
class IniFile {
 public:
  // An empty file; lines added to it end in CR LF.
  IniFile() = default;

  // Takes any bytes; what is no section and no "key=value" line is kept as it is.
  explicit IniFile(std::string_view text);

  // Reads a file of at most kLargestIniFile bytes.  One that does not exist is an empty one; one
  // that is there and cannot be read is an error, leaves *file empty, and must not be replaced by
  // what was made of it.
  static model::Status Load(const std::filesystem::path& path, IniFile* file);

  // The value of a key in the first section of that name, without white space around it and
  // without one pair of quotes around it; empty when the section or the key is missing.
  std::string Value(std::string_view section, std::string_view key) const;

  // A line of a section that is neither empty nor a comment.
  struct Entry {
    std::string key;    // the whole line where there is no "="
    std::string value;  // as Value() gives it

    bool operator==(const Entry&) const = default;
  };

  // What stands in all sections of that name, in the file's order.
  std::vector<Entry> Entries(std::string_view section) const;

  // Every line that is neither empty, a comment nor the head of a section, in the file's order,
  // with the name of its section; that is empty in front of the first.
  struct Line {
    std::string section;
    Entry entry;
    bool hasEquals = false;
  };
  std::vector<Line> Lines() const;

  // The names of the sections, in the file's order, one that is there twice twice.
  std::vector<std::string> Sections() const;

  // Sets a value.  A key that is missing is added at the end of its section, a section that is
  // missing at the end of the file.  A line that has the value already is not touched.
  // REQUIRES: neither text holds a line break
  void SetValue(std::string_view section, std::string_view key, std::string_view value);

  // The file's bytes.
  std::string Text() const;

  // Writes the file beside `path` and renames it, so that `path` is the old file or the new
  // one at any instant.  Writes nothing when the file has these bytes already.
  model::Status Save(const std::filesystem::path& path) const;

 private:
  // The first line of the section's body and the line behind its last one; both -1 when there
  // is no such section.
  struct Body {
    int first = -1;
    int end = -1;
  };
  Body FindSection(std::string_view section) const;
  int FindKey(const Body& body, std::string_view key) const;
  void InsertLine(int at, std::string_view content);

  std::vector<std::string> lines_;  // each with its line end, which the last may lack
  std::string lineEnd_ = "\r\n";
};

}  // namespace config

#endif  // CONFIG_INI_FILE_H_
