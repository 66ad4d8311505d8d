// SPDX-License-Identifier: MIT

#ifndef TOOLS_STAGE_APPLICATION_H_
#define TOOLS_STAGE_APPLICATION_H_

#include <QApplication>
#include <QTemporaryDir>

namespace stage {

// The toolkit's application in the console's style, for a program that must not touch the user's
// settings: its settings and its runtime folder are temporary.  Messages of the platform without a
// screen about itself are not printed.
class Application {
 public:
  Application(int& argc, char** argv);

 private:
  QTemporaryDir folder_;
  QApplication application_;
};

}  // namespace stage

#endif  // TOOLS_STAGE_APPLICATION_H_
