// SPDX-License-Identifier: MIT
//
// The real console on a disk that fails in the middle of the run: the operator is told what
// happened, nothing is lost that was there, and when the disk works again closing saves it all.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>

#include "db/database_files.h"
#include "tests/end_to_end/operator_edits.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/database_check.h"
#include "tests/support/simulator_process.h"

namespace test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int kForGood = 1 << 30;

struct DiskError {
  int error;
  const char* report;  // as the box tells it
};

// Full, broken, turned read-only by the system after an error.
constexpr DiskError kErrors[] = {
    {ENOSPC, "3026 - "},
    {EIO, "3043 - "},
    {EROFS, "3051 - "},
};

class ConsoleFaultsTest : public testing::Test {
 protected:
  // What the aids write has tests of its own: it fails in silence, or with a hint.
  void SetUp() override {
    folder_.WriteSettings(line_);
    plan_.Spare({"Tesk.journal", "Tesk.sent", "Teskctl.", "Backups"});
  }

  std::unique_ptr<ConsoleProcess> Start() {
    return std::make_unique<ConsoleProcess>(folder_, plan_.Prefix());
  }

  // A folder with a database, as earlier runs leave it.
  void RunOnce() {
    const auto console = Start();
    ASSERT_TRUE(console->IsUp());
    ASSERT_EQ(console->Terminate(), 0);
    tables_ = ReadStations(main_);
  }

  // The box that shows, closed as soon as it was read.
  static Box ReadBox(ConsoleProcess& console) {
    if (!ConsoleProcess::WaitFor([&] { return !console.Boxes().empty(); })) return {};
    Box box = console.Boxes()[0];
    console.CloseBox();
    return box;
  }

  static void ReadBoxes(ConsoleProcess& console) {
    while (!console.Boxes().empty()) console.CloseBox();
  }

  bool Edit(ConsoleProcess& console) {
    return Edits()[random_() % Edits().size()].make(console, random_, tables_);
  }

  // Closes the console, which has a working disk again: everything is saved.
  void EndAndLook(ConsoleProcess& console) {
    plan_.Lift();
    console.Trigger("ID_Exit");
    ASSERT_EQ(console.WaitForEnd(), 0);
    EXPECT_EQ(WhatIsWrong(main_), "");
    EXPECT_EQ(ReadStations(main_), tables_);
    EXPECT_FALSE(fs::exists(copy_));
  }

  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  ConsoleFolder folder_;
  const fs::path main_ = folder_ / db::kMainFile;
  const fs::path copy_ = folder_ / db::kWorkingCopy;
  const std::string line_ = folder_.Home() / "line";
  SimulatorProcess simulator_{{"--log", "--link", line_}};
  faults::FaultPlan plan_{folder_.Program()};
  std::mt19937 random_{5};
  StoredTables tables_;
};

// While the first database is made, at its beginning, in its middle, and at the renaming.
TEST_F(ConsoleFaultsTest, ADatabaseThatCannotBeCreatedIsSaidAndLeavesNoHalfOne) {
  RunOnce();
  fs::remove(main_);
  plan_.Restart();
  ASSERT_EQ(Start()->Terminate(), 0);
  const auto calls = plan_.Calls();
  for (const auto& [error, report] : kErrors) {
    for (const char* const place : {"open Tesk.mdb.new", "write Tesk.mdb.new", "rename Tesk.mdb"}) {
      SCOPED_TRACE(testing::Message() << place << ", errno " << error);
      const auto at = std::find(calls.begin(), calls.end(), place);
      ASSERT_NE(at, calls.end());
      fs::remove(main_);
      plan_.Restart();
      plan_.Fail(static_cast<int>(at - calls.begin()) + 1, kForGood, error);
      const auto console = Start();
      ASSERT_TRUE(console->IsUp());
      const Box box = ReadBox(*console);
      EXPECT_EQ(box.icon, "critical");
      EXPECT_EQ(box.title, "Database Error");
      EXPECT_THAT(box.text,
                  StartsWith("Error Opening Database File\r\rError #  " + std::string(report)));
      ReadBoxes(*console);
      EXPECT_FALSE(fs::exists(main_));
      plan_.Lift();
      EXPECT_EQ(console->Terminate(), 0);
      EXPECT_FALSE(fs::exists(main_));
      ASSERT_FALSE(HasFailure());
    }
  }
  const auto console = Start();
  ASSERT_TRUE(console->IsUp());
  EXPECT_TRUE(console->Boxes().empty());
  EndAndLook(*console);
}

TEST_F(ConsoleFaultsTest, AWorkingCopyThatCannotBeMadeIsSaidAndTheDatabaseStays) {
  RunOnce();
  const std::string before = ReadFile(main_);
  plan_.Restart();
  ASSERT_EQ(Start()->Terminate(), 0);
  const auto calls = plan_.Calls();
  const auto copying = std::find(calls.begin(), calls.end(), "open WorkingDb.md$");
  ASSERT_NE(copying, calls.end());
  for (const auto& [error, report] : kErrors) {
    SCOPED_TRACE(error);
    plan_.Restart();
    plan_.Fail(static_cast<int>(copying - calls.begin()) + 1, kForGood, error);
    const auto console = Start();
    ASSERT_TRUE(console->IsUp());
    const Box box = ReadBox(*console);
    EXPECT_EQ(box.title, "Database Error");
    EXPECT_THAT(box.text,
                StartsWith("Error Opening Database File\r\rError #  " + std::string(report)));
    ReadBoxes(*console);
    plan_.Lift();
    EXPECT_EQ(console->Terminate(), 0);
    EXPECT_TRUE(ReadFile(main_) == before);
    EXPECT_FALSE(fs::exists(copy_));
  }
}

// In each call of an edit, once and for good.
TEST_F(ConsoleFaultsTest, AnEditThatCannotBeStoredIsSaidAndNotShown) {
  RunOnce();
  const std::string before = ReadFile(main_);
  const auto console = Start();
  ASSERT_TRUE(console->IsUp());
  ASSERT_TRUE(Edit(*console));
  int failures = 0;
  for (const auto& [error, report] : kErrors) {
    for (const int last : {0, kForGood}) {
      for (int call = 1;; ++call) {
        SCOPED_TRACE(testing::Message()
                     << "call " << call << (last == 0 ? "" : " and on") << ", errno " << error);
        plan_.Restart();
        plan_.Fail(call, std::max(call, last), error);
        ASSERT_EQ(console->Mark(6, 8), 0);
        console->Use("ID_ToggleInhibit", 6, 8);
        ASSERT_TRUE(ConsoleProcess::WaitFor(
            [&] { return console->Mark(6, 8) == 2 || !console->Boxes().empty(); }));
        const int count = plan_.Count();
        plan_.Lift();
        if (count < call) {
          // It was stored; and is taken back.
          ASSERT_GT(call, 1);
          console->Use("ID_ToggleInhibit", 6, 8);
          ASSERT_TRUE(ConsoleProcess::WaitFor([&] { return console->Mark(6, 8) == 0; }));
          break;
        }
        ++failures;
        const Box box = ReadBox(*console);
        EXPECT_EQ(box.title, "Control Error");
        EXPECT_THAT(box.text, StartsWith("Error Storing Crosspoint Inhibit\r\rError # " +
                                         std::string(report)));
        EXPECT_EQ(console->Mark(6, 8), 0);
        ASSERT_FALSE(HasFailure());
      }
    }
  }
  EXPECT_GE(failures, 6);
  EXPECT_TRUE(ReadFile(main_) == before);
  ASSERT_TRUE(Edit(*console)) << "the disk works";
  EndAndLook(*console);
}

// Something that stores many records at once: a block of the map, a button copied, labels of a
// file.
class StoredTogetherTest : public ConsoleFaultsTest {
 protected:
  void SetUp() override {
    ConsoleFaultsTest::SetUp();
    RunOnce();
    console_ = Start();
    ASSERT_TRUE(console_->IsUp());
  }

  static bool WaitFor(const std::function<bool()>& condition) {
    return ConsoleProcess::WaitFor(condition);
  }
  bool WaitForShown(const char* object, bool shown = true) {
    return WaitFor([&] { return console_->IsShown(object) == shown; });
  }

  // `ask` makes the console ready for the act, `begin` begins it, `isDone` says whether the screen
  // shows it as done, and `screen` what else it shows that belongs to it.  Each of some calls fails
  // once and for good; then it is said, and nothing is done.
  void FailInTheMiddle(const std::function<void()>& ask, const std::function<void()>& begin,
                       const std::function<bool()>& isDone,
                       const std::function<std::vector<std::string>()>& screen,
                       const std::string& title) {
    const int calls = CallsOf(ask, begin, isDone);
    ASSERT_GT(calls, 2) << "there is a middle";
    int round = 0;
    for (const int call : {1, calls / 2, calls}) {
      for (const int last : {0, kForGood}) {
        const auto& [error, report] = kErrors[round++ % 3];
        SCOPED_TRACE(testing::Message() << "call " << call << " of " << calls
                                        << (last == 0 ? "" : " and on") << ", errno " << error);
        ask();
        const std::vector<std::string> before = screen();
        plan_.Restart();
        plan_.Fail(call, std::max(call, last), error);
        begin();
        const Box box = ReadBox(*console_);
        EXPECT_EQ(box.title, "Control Error");
        EXPECT_THAT(box.text, StartsWith(title + "\r\rError # " + report));
        EXPECT_TRUE(console_->Boxes().empty()) << "said once";
        EXPECT_FALSE(isDone());
        EXPECT_EQ(screen(), before);
        EXPECT_FALSE(console_->Property("aidUndo", "enabled").toBool()) << "there is no such act";
        plan_.Lift();
        ASSERT_FALSE(HasFailure());
      }
    }
    ask();
    begin();
    EXPECT_TRUE(WaitFor(isDone)) << "the disk works";
    EXPECT_TRUE(console_->Boxes().empty());
  }

  // How often the act changes a file.  It is taken back.
  int CallsOf(const std::function<void()>& ask, const std::function<void()>& begin,
              const std::function<bool()>& isDone) {
    ask();
    plan_.Restart();
    begin();
    EXPECT_TRUE(WaitFor(isDone));
    const int calls = plan_.Count();
    console_->Trigger("aidUndo");
    EXPECT_TRUE(WaitFor([&] { return !console_->Property("aidUndo", "enabled").toBool(); }));
    return calls;
  }

  std::unique_ptr<ConsoleProcess> console_;
};

TEST_F(StoredTogetherTest, ABlockOfInhibits) {
  constexpr int kChannels = 64;
  const auto marks = [&] {  // of the last two inputs
    std::vector<std::string> rows;
    for (int output = 1; output <= kChannels; ++output) {
      rows.push_back(std::to_string(console_->Mark(output, kChannels - 1)) +
                     std::to_string(console_->Mark(output, kChannels)));
    }
    return rows;
  };
  FailInTheMiddle(
      [&] {
        console_->Choose(1, kChannels - 1);
        console_->Keys("msfgXmap", "Ctrl+Shift+End");
        console_->Trigger("ID_ToggleInhibit", "frmXmap");
        ASSERT_TRUE(WaitForShown("aidInhibitQuestion"));
      },
      [&] { console_->Click("aidInhibitAll"); },
      [&] { return marks() == std::vector<std::string>(kChannels, "22"); }, marks,
      "Error Storing Crosspoint Inhibit");
  for (int output = 1; output <= kChannels; ++output) {
    tables_.at(std::to_string(output) + " Inhibits").replace(kChannels - 2, 2, "11");
  }
  EndAndLook(*console_);
}

TEST_F(StoredTogetherTest, AButtonCopiedToAllStations) {
  constexpr int kStations = 64;
  // Nobody else has what the button of station 1 is here.
  const std::string prog = std::string(63, '0') + '1';
  ASSERT_EQ(console_->Terminate(), 0);
  SetField(main_, 1, "B1 Prog", prog);
  SetField(main_, 1, "B1 First", kStations);
  SetField(main_, 1, "B1 Type", 1);
  tables_ = ReadStations(main_);
  console_ = Start();
  ASSERT_TRUE(console_->IsUp());
  FailInTheMiddle(
      [&] {
        if (console_->IsShown("frmCopyTo")) return;  // it stays when it has failed
        console_->Trigger("ID_ButtonProgramming");
        ASSERT_TRUE(WaitForShown("frmButtons"));
        console_->Trigger("aidCopyToStations", "frmButtons");
        ASSERT_TRUE(WaitForShown("frmCopyTo"));
        console_->Click("optCopyButton");
        console_->Click("aidTickAll");
      },
      [&] { console_->Click("cmdOkCopy"); }, [&] { return !console_->IsShown("frmCopyTo"); },
      [&] { return console_->Rows("lstStations"); }, "Error Copying To Stations");
  for (int station = 2; station <= kStations; ++station) {
    for (const char* const field : {" B1 Prog", " B1 First", " B1 Type"}) {
      tables_[std::to_string(station) + field] = tables_.at(std::string("1") + field);
    }
  }
  EndAndLook(*console_);
}

TEST_F(StoredTogetherTest, LabelsOfAFile) {
  const fs::path file = folder_.Home() / "labels.csv";
  std::string text = "Station,Station Label\r\n";
  for (int station = 1; station <= 64; ++station) {
    const std::string number = std::to_string(station);
    text += number + ",CAM " + number + "\r\n";
    tables_.at(number + " Label") = "CAM " + number;
  }
  WriteFile(file, text);
  FailInTheMiddle(
      [&] {
        if (console_->IsShown("frmImport")) return;  // it stays when it has failed
        console_->Trigger("aidImportProgramming");
        ASSERT_TRUE(WaitForShown("aidImportDialog"));
        console_->Set("fileNameEdit", "text", QString::fromStdString(file.string()));
        console_->Keys("fileNameEdit", "Return");
        ASSERT_TRUE(WaitForShown("frmImport"));
      },
      [&] { console_->Click("cmdOkImport"); }, [&] { return !console_->IsShown("frmImport"); },
      [&] { return console_->Rows("lstImport"); }, "Error Importing A File");
  EndAndLook(*console_);
}

// The last write of the run failed, and nothing was written after it.
TEST_F(ConsoleFaultsTest, ClosedOnABrokenDiskTheConsoleStaysAndSavesEverythingLater) {
  RunOnce();
  const auto console = Start();
  ASSERT_TRUE(console->IsUp());
  const std::string before = ReadFile(main_);
  for (int i = 0; i < 5; ++i) ASSERT_TRUE(Edit(*console));
  plan_.Restart();
  plan_.Fail(1, kForGood, EIO);
  console->Use("ID_ToggleInhibit", 6, 8);
  EXPECT_EQ(ReadBox(*console).title, "Control Error");
  console->Trigger("ID_Exit");
  const Box box = ReadBox(*console);
  EXPECT_EQ(box.title, "Database Error");
  EXPECT_THAT(box.text, StartsWith("Error Saving Database File\r\rError # 3043 - "));
  EXPECT_TRUE(ReadFile(main_) == before);
  EndAndLook(*console);
}

// In each call of the copy-back, once and for good: the console stays, with the work.
TEST_F(ConsoleFaultsTest, EveryFailureToSaveIsSaidAndSavingAgainWorks) {
  RunOnce();
  const std::string before = ReadFile(main_);
  plan_.Restart();
  const auto console = Start();
  ASSERT_TRUE(console->IsUp());
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(Edit(*console));
  int failures = 0;
  for (int call = 1;; ++call) {
    const auto& [error, report] = kErrors[call % 3];
    SCOPED_TRACE(testing::Message() << "call " << call << ", errno " << error);
    // A disk that fails for good does not let it be deleted; the next attempt would do so first.
    fs::remove(folder_ / "Tesk.mdb.new");
    plan_.Restart();
    plan_.Fail(call, failures % 2 == 0 ? call : kForGood, error);
    console->Trigger("ID_Exit");
    const Box box = ReadBox(*console);
    ASSERT_GE(plan_.Count(), call);
    const std::string last = plan_.Calls()[static_cast<std::size_t>(call) - 1];
    SCOPED_TRACE(last);
    ++failures;
    EXPECT_EQ(box.title, "Database Error");
    EXPECT_THAT(box.text,
                StartsWith("Error Saving Database File\r\rError # " + std::string(report)));
    EXPECT_TRUE(ReadFile(main_) == before);
    plan_.Lift();
    EXPECT_TRUE(Edit(*console)) << "the work goes on";
    ASSERT_FALSE(HasFailure());
    if (last == "rename Tesk.mdb") break;
  }
  EXPECT_GE(failures, 10);
  EndAndLook(*console);
}

// A disk that takes nothing of what the aids write: a hint, and the work goes on.
TEST_F(ConsoleFaultsTest, WhatTheAidsCannotWriteKeepsNobodyFromWorking) {
  RunOnce();
  plan_.Spare({"Tesk.mdb", "WorkingDb", "Orvotesk.ini"});
  for (const auto& [error, report] : kErrors) {
    SCOPED_TRACE(error);
    plan_.Restart();
    plan_.Fail(1, kForGood, error);
    const auto console = Start();
    ASSERT_TRUE(console->IsUp());
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(Edit(*console));
    EXPECT_TRUE(console->Boxes().empty());
    EXPECT_TRUE(ConsoleProcess::WaitFor([&] { return console->IsShown("aidHintStrip"); }));
    EXPECT_GT(plan_.Count(), 0);
    console->Trigger("ID_Exit");
    ASSERT_EQ(console->WaitForEnd(), 0);
    EXPECT_EQ(WhatIsWrong(main_), "");
    EXPECT_EQ(ReadStations(main_), tables_);
    EXPECT_FALSE(fs::exists(copy_));
  }
}

TEST_F(ConsoleFaultsTest, SettingsThatCannotBeWrittenAreSaidAndStayAsTheyWere) {
  RunOnce();
  folder_.WriteSettings(line_);
  const std::string before = ReadFile(folder_ / "Orvotesk.ini");
  plan_.Restart();
  ASSERT_EQ(Start()->Terminate(), 0);
  const auto calls = plan_.Calls();
  int failures = 0;
  for (std::size_t i = 0; i < calls.size(); ++i) {
    if (!calls[i].starts_with("write Orvotesk.ini") && calls[i] != "rename Orvotesk.ini") {
      continue;
    }
    SCOPED_TRACE(calls[i]);
    ++failures;
    folder_.WriteSettings(line_);
    plan_.Restart();
    plan_.Fail(static_cast<int>(i) + 1, kForGood, ENOSPC);
    const auto console = Start();
    ASSERT_TRUE(console->IsUp());
    console->Trigger("ID_Exit");
    const Box box = ReadBox(*console);
    EXPECT_EQ(box.title, "Error Processing");
    EXPECT_THAT(box.text, StartsWith("Error in Writing Configuration File\rError # 75 - "));
    EXPECT_EQ(console->WaitForEnd(), 0);
    EXPECT_EQ(ReadFile(folder_ / "Orvotesk.ini"), before);
    EXPECT_EQ(ReadStations(main_), tables_);
  }
  EXPECT_GE(failures, 2);
  plan_.Restart();
  ASSERT_EQ(Start()->Terminate(), 0);
  EXPECT_THAT(ReadFile(folder_ / "Orvotesk.ini"), HasSubstr("Download Interval=50\r\n"));
}

}  // namespace
}  // namespace test
