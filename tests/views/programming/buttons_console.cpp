// SPDX-License-Identifier: MIT

#include "tests/views/programming/buttons_console.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

namespace test {
namespace {

constexpr int kChannels = 64;

std::string NameOf(switcher::Table table) {
  switch (table) {
    case switcher::Table::Buttons:
      return "buttons";
    case switcher::Table::Relays:
      return "relays";
    case switcher::Table::Optos:
      return "optos";
    default:
      return "another table";
  }
}

}  // namespace

std::string Flags(const std::vector<int>& members) {
  std::string flags(64, '0');
  for (const int member : members) flags[static_cast<std::size_t>(member - 1)] = '1';
  return flags;
}

ButtonsConsole::ButtonsConsole() : ViewConsole(kChannels) {}

views::ButtonsView& ButtonsConsole::Open() {
  view = new views::ButtonsView(Services());
  const auto tell = [this](const char* what) {
    return [this, what](const switcher::TablePart& part) {
      told.push_back(what + (" " + NameOf(part.table)) + " " + std::to_string(part.station));
    };
  };
  QObject::connect(&unsent, &views::UnsentTables::Edited, view, tell("edited"));
  QObject::connect(&unsent, &views::UnsentTables::Sent, view, tell("sent"));
  QObject::connect(view, &views::MainView::NoteRequested, view,
                   [this](const QString& note) { told.push_back("note " + note.toStdString()); });
  QObject::connect(view, &views::MainView::QdvStatusRequested, view,
                   [this] { told.emplace_back("qdv"); });
  QObject::connect(view, &views::ButtonsView::SendButtonDataRequested, view,
                   [this] { told.emplace_back("send buttons"); });
  Show(view);
  return *view;
}

std::string ButtonsConsole::Caption(int button) {
  return Find<QPushButton>("cmdButton", button - 1).text().toStdString();
}

std::string ButtonsConsole::Type(int button) {
  return Find<QLabel>("lblBtype", button - 1).text().toStdString();
}

QColor ButtonsConsole::TypeColour(int button) {
  return Find<QLabel>("lblBtype", button - 1).palette().color(QPalette::Window);
}

std::vector<int> ButtonsConsole::Ticked(const char* array) {
  std::vector<int> ticked;
  for (int index = 0; index < 64; ++index) {
    if (Find<QCheckBox>(array, index).isChecked()) ticked.push_back(index);
  }
  return ticked;
}

std::vector<int> ButtonsConsole::Options() {
  std::vector<int> selected;
  for (const int code : {0, 1, 2, 3, 254, 255}) {
    if (Find<QRadioButton>("optButType", code).isChecked()) selected.push_back(code);
  }
  return selected;
}

std::string ButtonsConsole::TargetsCaption() {
  return Find<QGroupBox>(QStringLiteral("frStations")).title().toStdString();
}

std::string ButtonsConsole::StationText() {
  std::string text;
  for (const char* const name : {"txtStaLabel", "txtInptLabel", "txtPortNmbr"}) {
    text += text.empty() && std::string_view(name) == "txtStaLabel" ? "" : "|";
    text += Find<QLineEdit>(QString::fromLatin1(name)).text().toStdString();
  }
  return text;
}

void ButtonsConsole::Press(const char* name) {
  auto& button = Find<QAbstractButton>(QString::fromLatin1(name));
  ASSERT_TRUE(button.isVisible()) << name;
  QTest::mouseClick(&button, Qt::LeftButton);
}

void ButtonsConsole::ClickBox(const char* array, int index) {
  auto& box = Find<QCheckBox>(array, index);
  ASSERT_TRUE(box.isVisible()) << array << index;
  QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box.height() / 2));
}

void ButtonsConsole::ChooseOption(int code) {
  auto& option = Find<QRadioButton>("optButType", code);
  ASSERT_TRUE(option.isVisible()) << code;
  QTest::mouseClick(&option, Qt::LeftButton, Qt::NoModifier, QPoint(8, option.height() / 2));
}

void ButtonsConsole::GoToTab(int number) {
  Find<QTabWidget>(QStringLiteral("SSActiveTabs1")).setCurrentIndex(number - 1);
}

int ButtonsConsole::Tab() {
  return Find<QTabWidget>(QStringLiteral("SSActiveTabs1")).currentIndex() + 1;
}

void ButtonsConsole::PickButton(int button) {
  auto& selector = Find<QComboBox>(QStringLiteral("cmbButton"));
  ASSERT_TRUE(selector.isVisible());
  while (selector.currentIndex() != button - 1) {
    QTest::keyClick(&selector, selector.currentIndex() < button - 1 ? Qt::Key_Down : Qt::Key_Up);
  }
}

}  // namespace test
