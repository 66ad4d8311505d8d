// SPDX-License-Identifier: MIT

#ifndef TESTS_DB_DATABASE_FILES_FIXTURE_H_
#define TESTS_DB_DATABASE_FILES_FIXTURE_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "db/database_files.h"
#include "tests/support/temporary_folder.h"

namespace db {

// A folder of its own for the database and its working copy, neither of which is there yet.
class DatabaseFilesTest : public testing::Test {
 protected:
  // Edits the station that `files` stands on.
  static void SetLabel(DatabaseFiles& files, const char* label) {
    ASSERT_TRUE(files.Stations()->Edit().ok());
    ASSERT_TRUE(files.Stations()->Set("Label", label).ok());
    ASSERT_TRUE(files.Stations()->Update().ok());
  }

  // The label of the station that `files` stands on.
  static std::string Label(DatabaseFiles& files) {
    jet::Value value;
    EXPECT_TRUE(files.Stations()->Get("Label", &value).ok());
    return value.Text();
  }

  // The names of the files in the folder that begin so, sorted.
  std::vector<std::string> FilesThatBegin(const std::string& begin) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.Path())) {
      std::string name = entry.path().filename().string();
      if (name.starts_with(begin)) names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  test::TemporaryFolder folder_;
  const std::filesystem::path main_ = folder_ / kMainFile;
  const std::filesystem::path copy_ = folder_ / kWorkingCopy;
};

}  // namespace db

#endif  // TESTS_DB_DATABASE_FILES_FIXTURE_H_
