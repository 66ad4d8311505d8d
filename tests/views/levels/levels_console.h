// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_LEVELS_LEVELS_CONSOLE_H_
#define TESTS_VIEWS_LEVELS_LEVELS_CONSOLE_H_

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QScrollBar>
#include <QSlider>
#include <QTest>
#include <string>

#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"
#include "views/levels/input_level_dialog.h"

namespace test {

// A console with the input levels open over it; their parts by the names that the operator's
// tools know.
class LevelsConsole : public ViewConsole {
 public:
  explicit LevelsConsole(int channels = 64) : ViewConsole(channels) { model.ResetLevels(); }
  ~LevelsConsole() override { delete dialog; }

  views::InputLevelDialog& Open(const QDateTime& lastReport = QDateTime()) {
    dialog = new views::InputLevelDialog(Services(), lastReport, window.get());
    dialog->open();
    // The toolkit takes a dialog over an active window for active at once.
    const bool active = QTest::qWaitFor([this] { return QApplication::activeWindow() == dialog; });
    if (!active) throw std::runtime_error("no active dialog");
    return *dialog;
  }

  template <typename Widget>
  Widget& Find(const QString& name) {
    return test::Find<Widget>(*dialog, name);
  }
  QSlider& Slider(int index) { return Find<QSlider>(QStringLiteral("Slider1_%1").arg(index)); }
  QScrollBar& Scroll() { return Find<QScrollBar>(QStringLiteral("VScroll1")); }
  std::string Label(const char* name, int index) {
    return Find<QLabel>(QStringLiteral("%1_%2").arg(QLatin1String(name)).arg(index))
        .text()
        .toStdString();
  }
  std::string Caption() { return dialog->windowTitle().toStdString(); }
  std::string Tip(int index) { return Slider(index).toolTip().toStdString(); }
  int Gain(int index) { return model.InputGains[static_cast<std::size_t>(index)]; }
  void SetGain(int index, int gain) {
    model.InputGains[static_cast<std::size_t>(index)] = static_cast<std::int16_t>(gain);
  }

  QPointer<views::InputLevelDialog> dialog;
};

}  // namespace test

#endif  // TESTS_VIEWS_LEVELS_LEVELS_CONSOLE_H_
