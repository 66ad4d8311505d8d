// SPDX-License-Identifier: MIT
//
// teskpilot SOCKET REQUEST...: sends requests to a console that runs with the pilot plugin and
// prints the answers.  Exit code 1 when one of them is an error, 2 for wrong arguments.

#include <QCoreApplication>
#include <QJsonDocument>
#include <cstdio>

#include "tools/pilot/pilot_client.h"

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() < 3) {
    std::fputs("usage: teskpilot SOCKET REQUEST...\n", stderr);
    return 2;
  }
  pilot::Client client;
  if (!client.Connect(arguments[1], 10000)) {
    std::fputs("teskpilot: no console listens there\n", stderr);
    return 1;
  }
  int code = 0;
  for (qsizetype i = 2; i < arguments.size(); ++i) {
    const QJsonObject answer = client.Ask(QJsonDocument::fromJson(arguments[i].toUtf8()).object());
    std::puts(QJsonDocument(answer).toJson(QJsonDocument::Compact).constData());
    if (!answer.value(QLatin1String("ok")).toBool()) code = 1;
  }
  return code;
}
