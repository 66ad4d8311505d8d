// SPDX-License-Identifier: MIT
//
// The main function of tests with windows.  A warning from the toolkit fails the test in which
// it comes.

#include <gmock/gmock.h>

#include "tools/stage/application.h"

namespace {

QtMessageHandler previousHandler = nullptr;

void FailOnWarning(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  const bool platform = message.startsWith(QLatin1String("This plugin does not support"));
  if (type != QtDebugMsg && type != QtInfoMsg && !platform) {
    ADD_FAILURE() << "warning from the toolkit: " << message.toStdString();
  }
  previousHandler(type, context, message);
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  const stage::Application application(argc, argv);
  previousHandler = qInstallMessageHandler(FailOnWarning);
  return RUN_ALL_TESTS();
}
