// SPDX-License-Identifier: MIT

#include "tests/soak/operator.h"

#include <utility>

namespace soak {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kBetweenTasks{200};
constexpr std::chrono::seconds kPatience{60};

bool Always() { return true; }

}  // namespace

Operator::Operator(test::ConsoleProcess& console, test::StoredTables tables)
    : console_(console), tables_(std::move(tables)) {
  AddEdits();
  tasks_.push_back(
      {"send the inhibits", [this] { console_.Trigger("ID_SendInhibits", "frmXmap"); }, Always});
  AddTrigger("about", "ID_About", "frmTeskAbout");
  AddClose("close about", "frmTeskAbout");
  for (const auto& [command, view] :
       {std::pair{"ID_XpointMap", "frmXmap"}, std::pair{"ID_StationAlphas", "frmAlphas"},
        std::pair{"ID_ButtonProgramming", "frmButtons"}}) {
    AddClose("close a view", view);
    AddTrigger("open a view", command, view);
  }
  for (const auto& [command, window] :
       {std::pair{"aidCopyToStations", "frmCopyTo"}, std::pair{"aidWhereUsed", "frmWhereUsed"}}) {
    AddTrigger("open a window of the buttons", command, window, "frmButtons");
    AddClose("close a window of the buttons", window);
  }
  AddTrigger("open the recent changes", "aidRecentChanges", "frmChanges");
  AddClose("close the recent changes", "frmChanges");
  for (const char* const arrangement : {"ID_Cascade", "ID_TileHorizontal", "ID_TileVertical"}) {
    AddTrigger("arrange the windows", arrangement, "frmXmap");
  }
  AddEdits();
  AddTake();
  AddOutputLock();
  for (const auto& [command, window] : {std::pair{"ID_SourceLevelControl", "frmInptLevel"},
                                        std::pair{"ID_QDVStatus", "frmQdvTally"}}) {
    AddTrigger("open the levels or the tally", command, window);
    AddClose("close the levels or the tally", window);
  }
  AddTrigger("open the download", "ID_SendData", "frmDownProg");
  tasks_.push_back({"begin the download", [this] { console_.Click("cmdDownGo"); }, Always});
  tasks_.push_back({"cancel the download", [this] { console_.Click("cmdDownCancel"); },
                    [this] { return !console_.IsShown("frmDownProg"); }});
  AddSendChanges();
  AddTrigger("open the retrieval", "ID_RetreiveData", "frmSysInfo");
  AddClose("close the retrieval", "frmSysInfo");
  AddTrigger("open the copies", "aidRestoreBackup", "frmBackup");
  AddClose("close the copies", "frmBackup");
  AddTrigger("open the key sheets", "aidKeySheets", "frmKeySheets");
  AddClose("close the key sheets", "frmKeySheets");
  AddTrigger("open the settings", "aidSettings", "frmSettings");
  AddClose("close the settings", "frmSettings");
  AddTrigger("open the presets", "aidPresets", "frmPresets");
  AddClose("close the presets", "frmPresets");
  AddTrigger("lock the console", "aidLockConsole", "aidLocked");
  AddTrigger("ask to unlock it", "aidLockConsole", "aidUnlockQuestion");
  tasks_.push_back({"unlock it", [this] { console_.Click("aidUnlock"); },
                    [this] { return !console_.IsShown("aidLocked"); }});
  AddTrigger("begin a comparison", "aidCompare", "frmCompare");
  tasks_.push_back({"compare", [] {},
                    [this] {
                      return console_.Property("cmdCloseCmp", "text").toString() ==
                             QLatin1String("Close");
                    }});
  AddClose("close the comparison", "frmCompare");
}

void Operator::AddTrigger(const char* name, const char* action, const char* shows, const char* of) {
  tasks_.push_back({name, [this, action, of] { console_.Trigger(action, of); },
                    [this, shows] { return console_.IsShown(shows); }});
}

void Operator::AddClose(const char* name, const char* window) {
  tasks_.push_back({name, [this, window] { console_.CloseWindow(window); },
                    [this, window] { return !console_.IsShown(window); }});
}

// The last edit, taken back and done again: in the end everything is as it was.
void Operator::AddUndo() {
  const auto canRedo = [this] { return console_.Property("aidRedo", "enabled").toBool(); };
  tasks_.push_back({"undo", [this] { console_.Trigger("aidUndo"); }, canRedo});
  tasks_.push_back(
      {"redo", [this] { console_.Trigger("aidRedo"); }, [canRedo] { return !canRedo(); }});
}

// Thought better of, and then done: it closes by itself when the switcher has everything.  Nothing
// is unsent when a panel's take has held up the operator until the download was through, and a
// switcher that was busy may have left a poll without its answer: then there is the way out alone.
void Operator::AddSendChanges() {
  AddTrigger("open what is unsent", "aidSendChanges", "frmSendChanges");
  AddClose("close what is unsent", "frmSendChanges");
  AddTrigger("open what is unsent", "aidSendChanges", "frmSendChanges");
  tasks_.push_back({"send it",
                    [this] {
                      isConfirmed_ = console_.IsShown("cmdOkSendChg");
                      if (isConfirmed_) {
                        ++sends_;
                        console_.Click("cmdOkSendChg");
                      } else {
                        console_.CloseWindow("frmSendChanges");
                      }
                    },
                    [this] {
                      const QString status = console_.Property("lblSendChg", "text").toString();
                      if (status.startsWith(QLatin1String("Not confirmed"))) {
                        isConfirmed_ = false;
                        console_.CloseWindow("frmSendChanges");
                      }
                      if (console_.IsShown("frmSendChanges")) return false;
                      if (isConfirmed_) ++confirmedSends_;
                      return true;
                    }});
}

// A crosspoint that is not inhibited, made and undone.
void Operator::AddTake() {
  const auto mark = [this] { return console_.Mark(kOutput, input_); };
  tasks_.push_back({"take",
                    [this] {
                      const std::string& inhibits =
                          tables_.at(std::to_string(kOutput) + " Inhibits");
                      input_ = 1 + static_cast<int>(inhibits.find('0'));
                      console_.Use("ID_Take", kOutput, input_);
                    },
                    [mark] { return mark() == test::kCrosspoint; }});
  AddTrigger("ask to undo the take", "aidUndoTake", "aidUndoTakeQuestion", "frmXmap");
  tasks_.push_back(
      {"undo the take", [this] { console_.Click("aidTakeBack"); }, [mark] { return mark() == 0; }});
}

void Operator::AddOutputLock() {
  for (const bool locks : {true, false}) {
    tasks_.push_back({locks ? "lock an output" : "unlock an output",
                      [this] {
                        console_.Choose(kOutput, 1);
                        console_.Trigger("aidLockOutput", "frmXmap");
                      },
                      [this, locks] {
                        return console_.Property("aidLockOutput", "checked").toBool() == locks;
                      }});
  }
}

void Operator::AddEdits() {
  for (const test::OperatorEdit& edit : test::Edits()) {
    tasks_.push_back({edit.name,
                      [this, &edit] {
                        if (!edit.make(console_, random_, tables_)) stuck_ = edit.name;
                      },
                      Always});
    if (edit.isOfMany) AddUndo();
  }
}

void Operator::Step() {
  const auto now = Clock::now();
  const Task& task = tasks_[task_];
  if (!busy_) {
    if (now - begun_ < kBetweenTasks) return;
    begun_ = now;
    busy_ = true;
    task.begin();
    return;
  }
  if (!task.isDone()) {
    if (now - begun_ > kPatience) stuck_ = task.name;
    return;
  }
  busy_ = false;
  begun_ = now;
  if (++task_ < tasks_.size()) return;
  task_ = 0;
  ++rounds_;
}

}  // namespace soak
