// SPDX-License-Identifier: MIT

#include "tools/gallery/shown_console.h"

#include <QApplication>
#include <QTableView>
#include <QTest>

namespace gallery {

views::Services ShownConsole::Services() {
  return {.model = model,
          .stations = [this] { return Stations(); },
          .changes = changes,
          .locks = locks,
          .knownMap = knownMap,
          .commands = commands,
          .tables = switcher,
          .unsent = unsent,
          .poll = switcher,
          .settings = *settings,
          .reporter = switcher};
}

void ShownConsole::GoToCell(const QString& grid, int row, int column) {
  auto& cells = Find<QTableView>(grid);
  cells.setCurrentIndex(cells.model()->index(row, column));
}

void ShownConsole::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

// Each letter goes where the focus is: the first one may have opened a field.
void ShownConsole::Type(const char* text) {
  for (; *text != '\0'; ++text) QTest::keyClick(QApplication::focusWidget(), *text);
}

std::string Flags(std::initializer_list<int> members) {
  std::string flags(64, '0');
  for (const int member : members) flags[static_cast<std::size_t>(member - 1)] = '1';
  return flags;
}

}  // namespace gallery
