// SPDX-License-Identifier: MIT
//
// Copies of whole files.  Failures carry the numbers of the database engine, as every failure
// of the database does.

#ifndef DB_FILE_COPY_H_
#define DB_FILE_COPY_H_

#include <filesystem>

#include "model/status.h"

namespace db {

// Copies `from` to `to`, which must not exist.  The copy may be written by its owner, whatever
// the original allows.  After a failure part of the copy may stand there.
model::Status CopyFile(const std::filesystem::path& from, const std::filesystem::path& to);

// Replaces `to` by a copy of `from`: the copy is written beside it, brought to the disk and
// then renamed, so that a power cut at any instant leaves the old file or the new one, whole.
// The replaced file's permissions stay.  After a failure `to` is as it was.
model::Status ReplaceFile(const std::filesystem::path& from, const std::filesystem::path& to);

// The name beside `to` under which a file is made that is to replace it.  When `to` is a link, in
// the folder of what it leads to, whether that is there or not.
std::filesystem::path Beside(const std::filesystem::path& to);

// Brings the bytes of a file to the disk, so that a power cut finds them there.
model::Status BringToDisk(const std::filesystem::path& path);

// Renames Beside(to), which must be on the disk, to what `to` is or leads to.  After a failure
// both are as they were.
model::Status PutInPlace(const std::filesystem::path& to);

// Deletes a file; one that does not exist is a success.
model::Status RemoveFile(const std::filesystem::path& path);

}  // namespace db

#endif  // DB_FILE_COPY_H_
