// SPDX-License-Identifier: MIT

#include "tests/views/programming/opto_console.h"

#include <QTest>
#include <QVBoxLayout>
#include <stdexcept>

namespace test {

OptoConsole::OptoConsole() : ViewConsole(64) {
  SetField(1, "OptoType", 0);
  SetField(1, "OptoFirst", 3);
  SetField(1, "OptoStations", Flags({3, 5}));
  SetField(2, "OptoType", 1);
  SetField(2, "OptoFirst", 7);
  SetField(2, "OptoStations", Flags({7}));
}

void OptoConsole::Open() {
  host = std::make_unique<QWidget>();
  host->setWindowTitle(QStringLiteral("Opto Assignments"));
  page = new views::OptoPage(shown);
  auto* const column = new QVBoxLayout(host.get());
  column->addWidget(page->ChannelSelector(), 0, Qt::AlignLeft);
  column->addWidget(page);
  page->ChannelSelector()->show();
  QObject::connect(&unsent, &views::UnsentTables::Edited, page,
                   [this](const switcher::TablePart& part) { edited.push_back(part.station); });
  QObject::connect(page, &views::OptoPage::NoteRequested, page,
                   [this](const QString& note) { notes.push_back(note.toStdString()); });
  {
    views::StationEvent opening(shown, views::StationEvent::Cause::Operator);
    page->Show(opening);
  }
  host->show();
  host->activateWindow();
  if (!QTest::qWaitForWindowActive(host.get())) throw std::runtime_error("no active window");
}

void OptoConsole::Load(int opto) {
  GoToStation(opto);
  views::StationEvent event(shown, views::StationEvent::Cause::Refresh);
  page->UpdateOptoSelections(event);
  page->SelectChannel(event);
  page->UpdateOptoOptionButtons(event);
}

void OptoConsole::Refresh(void (views::OptoPage::*update)(views::StationEvent&)) {
  views::StationEvent event(shown, views::StationEvent::Cause::Refresh);
  (page->*update)(event);
}

QComboBox& OptoConsole::Channels() {
  return *host->findChild<QComboBox*>(QStringLiteral("cmbOptoChan"));
}

bool OptoConsole::NoteIsShown() {
  return host->findChild<QWidget*>(QStringLiteral("aidOptoInactiveNote"))->isVisible();
}

QGroupBox& OptoConsole::Frame() {
  return *host->findChild<QGroupBox*>(QStringLiteral("frOptoStations"));
}

QCheckBox& OptoConsole::Box(int index) {
  return *host->findChild<QCheckBox*>(QStringLiteral("ckOptoStationSel_%1").arg(index));
}

QRadioButton& OptoConsole::Option(int code) {
  return *host->findChild<QRadioButton*>(QStringLiteral("optOptoType_%1").arg(code));
}

std::vector<int> OptoConsole::SelectedOptions() {
  std::vector<int> codes;
  for (const int code : {0, 1, 2, 3, 254, 255}) {
    if (Option(code).isChecked()) codes.push_back(code);
  }
  return codes;
}

std::vector<int> OptoConsole::Ticked() {
  std::vector<int> targets;
  for (int target = 1; target <= 64; ++target) {
    if (Box(target - 1).isChecked()) targets.push_back(target);
  }
  return targets;
}

std::string OptoConsole::BoxCaption(int target) { return Box(target - 1).text().toStdString(); }

std::string OptoConsole::ChannelItem(int channel) {
  return Channels().itemText(channel - 1).toStdString();
}

std::string OptoConsole::FrameCaption() { return Frame().title().toStdString(); }

std::string OptoConsole::Stored(int opto) {
  std::string stored = std::to_string(Number(opto, "OptoType")) + "|" +
                       std::to_string(Number(opto, "OptoChannel")) + "|" +
                       std::to_string(Number(opto, "OptoFirst")) + "|";
  const std::string flags = Text(opto, "OptoStations");
  if (flags.size() != 64) return stored + "of other length: " + flags;
  const char* separator = "";
  for (std::size_t at = 0; at < flags.size(); ++at) {
    if (flags[at] == '0') continue;
    stored += separator + (flags[at] == '1' ? std::to_string(at + 1) : std::string(1, flags[at]));
    separator = ",";
  }
  return stored;
}

}  // namespace test
