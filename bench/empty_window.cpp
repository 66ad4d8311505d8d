// SPDX-License-Identifier: MIT
//
// A main window with nothing in it: what any program with this toolkit costs.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QMainWindow window;
  window.setObjectName(QStringLiteral("frmMain"));
  window.resize(433, 433);
  window.show();
  return QApplication::exec();
}
