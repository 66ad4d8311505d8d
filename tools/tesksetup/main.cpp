// SPDX-License-Identifier: MIT

#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QProcess>
#include <QSerialPortInfo>
#include <QStandardPaths>
#include <cerrno>
#include <cstdio>
#include <span>
#include <system_error>

#include "tools/command_line/option.h"
#include "tools/tesksetup/console_folder.h"
#include "tools/tesksetup/menu_entry.h"
#include "tools/tesksetup/set_up_dialog.h"
#include "views/widgets/console_style.h"

namespace {

using command_line::Option;

struct Options {
  QString start;  // the folder of the console to start; empty: ask for one to set up
  bool help = false;
};

std::vector<Option> KnownOptions(Options* options) {
  return {
      {"start", "FOLDER", "start the console of FOLDER, with the program as installed now",
       "a folder",
       [options](std::string_view value) {
         options->start = QDir(QString::fromLocal8Bit(value.data(), static_cast<int>(value.size())))
                              .absolutePath();
         return !value.empty();
       }},
      {"help", "", "print this and end", "",
       [options](std::string_view) { return options->help = true; }},
  };
}

void PrintHelp() {
  std::string text =
      "Usage: tesksetup [OPTION]...\n"
      "\n"
      "Sets up a console in a folder of its own: asks for it in a window, copies teskctl there,\n"
      "writes its settings and adds it to the applications menu.\n"
      "\n"
      "Options:\n";
  Options unused;
  for (const Option& option : KnownOptions(&unused)) text += command_line::HelpLine(option);
  text +=
      "\n"
      "Exit status: 0 when done; 1 when the console cannot be started; 2 for a wrong command\n"
      "line.  With --start the console takes the place of this program.\n";
  std::fputs(text.c_str(), stdout);
}

// The console's executable as it was installed, beside this one.
QString InstalledProgram() { return tesksetup::ProgramIn(QCoreApplication::applicationDirPath()); }

// Starts the console in place of this program.  Returns only after a failure: why it failed.
QString BecomeConsole(const QString& folder, int argc, char** argv) {
  {
    const QCoreApplication application(argc, argv);
    // The console is started all the same: an older one is better than none.
    if (const auto status = tesksetup::UpdateProgram(InstalledProgram(), folder); !status.ok()) {
      std::fprintf(stderr, "tesksetup: %s\n", status.Description().c_str());
    }
  }
  QByteArray program = QFile::encodeName(tesksetup::ProgramIn(folder));
  char* const arguments[] = {program.data(), nullptr};
  execv(program.constData(), arguments);
  return tesksetup::ProgramIn(folder) + QStringLiteral(": ") +
         QString::fromStdString(std::generic_category().message(errno));
}

// The serial devices of the machine, beginning with the names that belong to one adapter for good.
QStringList SerialDevices() {
  QStringList devices;
  const QDir fixed(QStringLiteral("/dev/serial/by-id"));
  for (const QString& name : fixed.entryList(QDir::System | QDir::Files, QDir::Name)) {
    devices.append(fixed.filePath(name));
  }
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
    devices.append(port.systemLocation());
  }
  return devices;
}

model::Status SetUp(const tesksetup::ConsolePlan& plan) {
  using tesksetup::Places;
  const QString menu = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
  // A console that the user already has keeps the places of its windows.
  const Places places = tesksetup::IsInMenu(plan.folder, menu) ? Places::AsTheyAre : Places::Own;
  if (model::Status status = tesksetup::MakeConsoleFolder(plan, InstalledProgram(), places);
      !status.ok()) {
    return status;
  }
  return tesksetup::AddToMenu(plan, QCoreApplication::applicationFilePath(), menu);
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  const auto arguments = std::span<const char* const>(argv, static_cast<std::size_t>(argc));
  const std::string problem =
      command_line::ParseOptions(arguments.subspan(1), KnownOptions(&options));
  if (!problem.empty()) {
    std::fprintf(stderr, "tesksetup: %s; --help explains\n", problem.c_str());
    return 2;
  }
  if (options.help) {
    PrintHelp();
    return 0;
  }
  QString failure;
  if (!options.start.isEmpty()) failure = BecomeConsole(options.start, argc, argv);

  int programOnly = 1;
  const QApplication application(programOnly, argv);
  QApplication::setStyle(new views::ConsoleStyle);
  if (!failure.isEmpty()) {
    std::fprintf(stderr, "tesksetup: %s\n", qPrintable(failure));
    QMessageBox box(QMessageBox::Critical,
                    QCoreApplication::translate("tesksetup", "The Console Does Not Start"),
                    failure);
    box.show();
    QApplication::exec();
    return 1;
  }
  tesksetup::SetUpDialog dialog({.setUp = SetUp,
                                 .start =
                                     [](const QString& folder) {
                                       return QProcess::startDetached(tesksetup::ProgramIn(folder),
                                                                      {}, folder);
                                     }},
                                SerialDevices(), QDir::home().filePath(QStringLiteral("Intercom")));
  dialog.show();
  return QApplication::exec();
}
