// SPDX-License-Identifier: MIT

#include <QCoreApplication>
#include <cstdio>
#include <memory>

#include "tools/teskpanel/exit_code.h"
#include "tools/teskpanel/options.h"
#include "tools/teskpanel/panel.h"
#include "tools/teskpanel/printer.h"
#include "tools/teskpanel/show_task.h"
#include "tools/teskpanel/take_task.h"
#include "tools/teskpanel/watch_task.h"

namespace {

using teskpanel::Options;

std::unique_ptr<teskpanel::Task> MakeTask(const Options& options, teskpanel::Printer& printer) {
  switch (options.command) {
    case Options::Command::Show:
      return std::make_unique<teskpanel::ShowTask>(options.mask, options.numbers, printer);
    case Options::Command::Take:
      return std::make_unique<teskpanel::TakeTask>(options.output, options.input, options.action,
                                                   printer);
    case Options::Command::Watch:
      return std::make_unique<teskpanel::WatchTask>(
          options.mask, options.host + ":" + std::to_string(options.port), printer);
  }
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  const auto arguments = std::span<const char* const>(argv, static_cast<std::size_t>(argc));
  const std::string problem = teskpanel::ParseOptions(arguments.subspan(1), &options);
  if (!problem.empty()) {
    std::fprintf(stderr, "teskpanel: %s; --help explains\n", problem.c_str());
    return static_cast<int>(teskpanel::ExitCode::Usage);
  }
  if (options.help) {
    std::fputs(teskpanel::HelpText().c_str(), stdout);
    return static_cast<int>(teskpanel::ExitCode::Done);
  }
  // The toolkit sees none of the arguments: a panel has no options of the toolkit's.
  int programOnly = 1;
  const QCoreApplication application(programOnly, argv);
  teskpanel::Printer printer(options.json);
  const std::unique_ptr<teskpanel::Task> task = MakeTask(options, printer);
  teskpanel::Panel panel(options, *task, printer);
  panel.Start();
  return QCoreApplication::exec();
}
