// SPDX-License-Identifier: MIT

#include "tests/support/run_program.h"

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace test {

ProgramResult RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& input) {
  constexpr int kPatience = 30000;  // milliseconds
  QStringList list;
  for (const std::string& argument : arguments) list.append(QString::fromStdString(argument));
  QProcess process;
  ProgramResult result;
  process.start(QString::fromStdString(program), list);
  if (!process.waitForStarted(kPatience)) return result;
  process.write(QByteArray::fromStdString(input));
  process.closeWriteChannel();
  if (!process.waitForFinished(kPatience)) {
    process.kill();
    process.waitForFinished(kPatience);
    return result;
  }
  result.output = process.readAllStandardOutput().toStdString();
  result.errors = process.readAllStandardError().toStdString();
  if (process.exitStatus() == QProcess::NormalExit) result.exitCode = process.exitCode();
  return result;
}

}  // namespace test
