// SPDX-License-Identifier: MIT

#include "tests/end_to_end/programming_edits.h"

#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/end_to_end/pending_tables.h"

namespace test {

namespace {

constexpr int kStations = 64;
constexpr int kTargets = 64;
constexpr int kRelays = 64;
constexpr int kButtons = 32;
constexpr const char* kInactive = "254";

// The tabs of the window, from 0.
enum Tab { kEditTab = 4, kRelayTab = 5, kOptoTab = 6 };

// Operations as they are stored.
constexpr const char* kOperations[] = {"0", "1", "2", "3", "254", "255"};

constexpr const char* kMovements[] = {"cmdFirst", "cmdPrev", "cmdBack10",
                                      "cmdFwd10", "cmdNext", "cmdLast"};

std::string ButtonField(int button, const char* suffix) {
  return "B" + std::to_string(button) + " " + suffix;
}

int FirstTarget(const std::string& flags) { return static_cast<int>(flags.find('1')) + 1; }

// The window, and what the tables come to hold by what is done in it.
class Programming {
 public:
  Programming(ConsoleProcess& console, std::mt19937& random, StoredTables& tables)
      : console_(console), random_(random), tables_(tables) {}

  int Draw(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

  // Brings the window up at a station by chance.
  bool Open(Tab tab) {
    console_.Trigger("ID_ButtonProgramming");
    if (!Comes("the window", [this] { return console_.IsShown("frmButtons"); })) return false;
    for (int steps = 1 + Draw(3); steps > 0; --steps) {
      LeaveButton();
      const auto movement = static_cast<std::size_t>(Draw(std::size(kMovements) + 1));
      if (movement < std::size(kMovements)) {
        console_.Click(kMovements[movement]);
      } else if (!FindStation(1 + Draw(kStations))) {
        return false;
      }
    }
    const int shown = console_.Property("SSActiveTabs1", "currentIndex").toInt(-1);
    if (shown != tab) {
      LeaveButton();
      console_.Set("SSActiveTabs1", "currentIndex", tab);
    }
    station_ = Station();
    return station_ > 0;
  }

  // Selects a button of the station by chance.
  bool SelectButton() {
    const int index = Draw(kButtons);
    if (console_.Property("cmbButton", "currentIndex").toInt(-1) != index) {
      LeaveButton();
      console_.Set("cmbButton", "currentIndex", index);
    }
    button_ = index + 1;
    return SelectedButton() == button_;
  }

  // The button that was selected, from 1.
  int Button() const { return button_; }

  std::string Get(std::string_view field) const { return tables_.Get(station_, field); }
  void Set(std::string_view field, const std::string& value) {
    tables_.Set(station_, field, value);
  }

  // Another station gets the button.  Without targets it is inactive there.
  void CopyTo(int station) {
    const std::string prog = Get(ButtonField(button_, "Prog"));
    const int first = FirstTarget(prog);
    tables_.Set(station, ButtonField(button_, "Prog"), prog);
    tables_.Set(station, ButtonField(button_, "First"), std::to_string(first == 0 ? 1 : first));
    tables_.Set(station, ButtonField(button_, "Type"),
                first == 0 ? kInactive : Get(ButtonField(button_, "Type")));
  }

  // Clicks a box, which shows what it was, and is the other way then; the flag of it follows.
  bool Toggle(const char* boxes, int member, std::string_view field) {
    const std::string box = std::string(boxes) + "_" + std::to_string(member);
    std::string flags = Get(field);
    char& flag = flags.at(static_cast<std::size_t>(member));
    const bool before = flag == '1';
    if (IsChecked(box) != before) return false;
    console_.Click(box.c_str());
    if (!Comes("the other state", [&] { return IsChecked(box) == !before; })) return false;
    flag = before ? '0' : '1';
    Set(field, flags);
    return true;
  }

  bool Choose(const char* options, const char* code, std::string_view field) {
    const std::string option = std::string(options) + "_" + code;
    console_.Click(option.c_str());
    if (!Comes("the operation", [&] { return IsChecked(option) == true; })) return false;
    Set(field, code);
    return true;
  }

  // The console lives to have done all of it.
  bool Done() {
    if (!console_.Lives()) return false;
    tables_.Commit();
    return true;
  }

 private:
  // Says what it waits for in vain: a long run has nobody who looks.
  bool Comes(const char* what, const std::function<bool()>& hasCome) {
    if (console_.LivesUntil(hasCome)) return true;
    std::printf("programming: %s does not come; station %d, typed \"%s\", button %d\n", what,
                Station(),
                console_.Property("aidStationText", "text").toString().toStdString().c_str(),
                SelectedButton());
    return false;
  }

  // Goes to a station by its number.
  bool FindStation(int station) {
    console_.Focus("aidStationText");
    console_.Keys("aidStationText", "Ctrl+A");
    console_.Type("aidStationText", std::to_string(station));
    console_.Keys("aidStationText", "Return");
    return Comes("the station", [&] { return Station() == station; });
  }

  int SelectedButton() { return console_.Property("cmbButton", "currentIndex").toInt(-1) + 1; }
  int Station() { return console_.Property("txtPortNmbr", "text").toString().toInt(); }

  // Nothing when nobody answers any more.
  std::optional<bool> IsChecked(const std::string& box) {
    const QJsonValue checked = console_.Property(box.c_str(), "checked");
    return checked.isBool() ? std::optional(checked.toBool()) : std::nullopt;
  }

  // A button that is left without targets becomes inactive.
  void LeaveButton() {
    const int station = Station();
    const int button = SelectedButton();
    if (station < 1 || button < 1) return;
    if (tables_.Get(station, ButtonField(button, "Prog")).find('1') != std::string::npos) return;
    tables_.Set(station, ButtonField(button, "First"), "1");
    tables_.Set(station, ButtonField(button, "Type"), kInactive);
  }

  ConsoleProcess& console_;
  std::mt19937& random_;
  PendingTables tables_;
  int station_ = 0;
  int button_ = 0;
};

bool ToggleTargetOf(Programming& window, int target) {
  const int button = window.Button();
  const std::string prog = ButtonField(button, "Prog");
  if (!window.Toggle("ckStationSel", target, prog)) return false;
  const int first = FirstTarget(window.Get(prog));
  window.Set(ButtonField(button, "First"), std::to_string(first == 0 ? 1 : first));
  if (first == 0) window.Set(ButtonField(button, "Type"), kInactive);
  return true;
}

}  // namespace

bool ToggleTarget(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  Programming window(console, random, tables);
  return window.Open(kEditTab) && window.SelectButton() &&
         ToggleTargetOf(window, window.Draw(kTargets)) && window.Done();
}

bool ClearTargets(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  Programming window(console, random, tables);
  if (!window.Open(kEditTab) || !window.SelectButton()) return false;
  const std::string prog = ButtonField(window.Button(), "Prog");
  while (const int first = FirstTarget(window.Get(prog))) {
    if (!ToggleTargetOf(window, first - 1)) return false;
  }
  return window.Done();
}

bool ChooseOperation(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  Programming window(console, random, tables);
  return window.Open(kEditTab) && window.SelectButton() &&
         window.Choose("optButType", kOperations[window.Draw(std::size(kOperations))],
                       ButtonField(window.Button(), "Type")) &&
         window.Done();
}

bool CopyButton(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  Programming window(console, random, tables);
  if (!window.Open(kEditTab) || !window.SelectButton() ||
      !ToggleTargetOf(window, window.Draw(kTargets))) {
    return false;
  }
  console.Trigger("aidCopyToStations", "frmButtons");
  if (!console.LivesUntil([&] { return console.IsShown("frmCopyTo"); })) return false;
  console.Click("optCopyButton");
  const std::vector<std::string> stations = console.Rows("lstStations");
  if (stations.empty()) return false;
  console.Keys("lstStations", "Home");
  // One behind the other, from the first on.
  for (std::size_t row = 0, ticks = 0; row < stations.size() && ticks < 4; ++row) {
    if (window.Draw(8) == 0) {
      console.Keys("lstStations", "Space");
      window.CopyTo(std::stoi(stations[row]));
      ++ticks;
    }
    console.Keys("lstStations", "Down");
  }
  const bool isAnyOther = console.Property("cmdOkCopy", "enabled").toBool();
  console.Click(isAnyOther ? "cmdOkCopy" : "cmdCancelCopy");
  return console.LivesUntil([&] { return !console.IsShown("frmCopyTo"); }) && window.Done();
}

bool ToggleRelay(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  Programming window(console, random, tables);
  return window.Open(kRelayTab) && window.Toggle("ckRelaySel", window.Draw(kRelays), "Relays") &&
         window.Done();
}

bool ToggleOptoTarget(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  Programming window(console, random, tables);
  if (!window.Open(kOptoTab) ||
      !window.Toggle("ckOptoStationSel", window.Draw(kTargets), "OptoStations")) {
    return false;
  }
  const int first = FirstTarget(window.Get("OptoStations"));
  window.Set("OptoFirst", std::to_string(first == 0 ? 1 : first));
  if (first == 0) window.Set("OptoType", kInactive);
  return window.Done();
}

bool ChooseOptoOperation(ConsoleProcess& console, std::mt19937& random, StoredTables& tables) {
  Programming window(console, random, tables);
  if (!window.Open(kOptoTab) ||
      !window.Choose("optOptoType", kOperations[window.Draw(std::size(kOperations))], "OptoType")) {
    return false;
  }
  const int channel = window.Draw(kTargets);
  console.Set("cmbOptoChan", "currentIndex", channel);
  if (!console.LivesUntil(
          [&] { return console.Property("cmbOptoChan", "currentIndex").toInt(-1) == channel; })) {
    return false;
  }
  window.Set("OptoChannel", std::to_string(channel + 1));
  return window.Done();
}

}  // namespace test
