// SPDX-License-Identifier: MIT

#include "db/kept_file.h"

#include <system_error>

#include "db/dated_name.h"
#include "db/file_status.h"
#include "db/jet/format.h"
#include "files/file.h"
#include "files/whole_file.h"

namespace db {

namespace fs = std::filesystem;

std::optional<KeptFile::Stamp> KeptFile::StampNow() const {
  std::error_code error;
  Stamp stamp;
  stamp.size = fs::file_size(file_, error);
  if (!error) stamp.time = fs::last_write_time(file_, error);
  return error ? std::nullopt : std::optional(stamp);
}

void KeptFile::Note() {
  noted_ = StampNow();
  kept_.reset();
  copy_.clear();
}

model::Status KeptFile::Keep() {
  copy_.clear();
  std::error_code unseen;
  if (!fs::exists(file_, unseen) && !unseen) return {};
  const std::optional<Stamp> now = StampNow();
  if (now && now == kept_) return {};
  fs::path copy;
  const char* const what = now == noted_ ? "damaged" : "replaced";
  if (model::Status status = DatedName(file_, what, &copy); !status.ok()) return status;
  if (const auto copied = files::Copy(file_, copy, jet::kJet4.maxFileSize); !copied.ok()) {
    return StatusOf(copied);
  }
  copy_ = copy;
  kept_ = now;
  // On the disk before the file itself goes.
  files::File made;
  std::error_code error = files::File::OpenToEdit(copy_, &made);
  if (!error) error = made.Sync();
  if (error) {
    TakeBack();
    return StatusOf(files::Failure("write", copy, error));
  }
  files::SyncFolder(copy_.parent_path());
  return {};
}

void KeptFile::TakeBack() {
  if (copy_.empty() || !files::Remove(copy_).ok()) return;
  copy_.clear();
  kept_.reset();
}

}  // namespace db
