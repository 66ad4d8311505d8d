// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_GUI_SUPPORT_H_
#define TESTS_VIEWS_GUI_SUPPORT_H_

#include <QApplication>
#include <QTemporaryDir>

namespace test {

// An application as the console has it, with its own style, but with settings and a runtime folder
// of its own that go away with the object.  What the platform without a screen says of itself is
// kept quiet.
class GuiApplication {
 public:
  GuiApplication(int& argc, char** argv);

 private:
  QTemporaryDir folder_;
  QApplication application_;
};

}  // namespace test

#endif  // TESTS_VIEWS_GUI_SUPPORT_H_
