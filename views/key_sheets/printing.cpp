// SPDX-License-Identifier: MIT

#include "views/key_sheets/printing.h"

#include <QCoreApplication>
#include <QPointer>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTimer>

#include <utility>

namespace views {
namespace {

// Its sentences are read here.
QProcessEnvironment InEnglish() {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
  return environment;
}

// Why a program that has ended was no success; empty for one that was.
QString WhyFailed(QProcess& process) {
  if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return {};
  const QString said = QString::fromUtf8(process.readAllStandardError()).simplified();
  return said.isEmpty() ? Printing::tr("%1 has failed").arg(process.program()) : said;
}

constexpr int kEndMilliseconds = 200;

// Ends a process, which takes no time unless the system hangs: then it is left to itself.
void Abandon(QProcess* process) {
  process->kill();
  process->waitForFinished(kEndMilliseconds);
  if (process->state() == QProcess::NotRunning) {
    process->deleteLater();
    return;
  }
  process->setParent(QCoreApplication::instance());
  QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
}

}  // namespace

Printing::~Printing() {
  for (QProcess* const process : {list_, job_}) {
    if (process == nullptr) continue;
    process->disconnect(this);
    process->setParent(nullptr);  // it may be about to be deleted with this
    Abandon(process);
  }
}

QProcess* Printing::Run(
    const QString& program, const QStringList& arguments,
    const std::function<void(const QString& why, const QByteArray& said)>& then) {
  auto* const process = new QProcess(this);
  process->setProcessEnvironment(InEnglish());
  connect(process, &QProcess::finished, this, [process, then] {
    process->deleteLater();
    const QString why = WhyFailed(*process);
    then(why, process->readAllStandardOutput());
  });
  // Queued, both: who asks is to know first that it runs.
  const auto isNotThere = [this, process = QPointer(process), then] {
    if (process == nullptr || (process != list_ && process != job_)) return;
    process->deleteLater();
    then(tr("%1 is not installed").arg(process->program()), {});
  };
  process->setProgram(program);
  // The toolkit keeps a handle of each that it tried in vain.
  if (QStandardPaths::findExecutable(program).isEmpty()) {
    QTimer::singleShot(0, this, isNotThere);
    return process;
  }
  connect(
      process, &QProcess::errorOccurred, this,
      [isNotThere](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) isNotThere();
      },
      Qt::QueuedConnection);
  process->start(program, arguments);
  return process;
}

void Printing::ReadPrinters() {
  if (list_ != nullptr) return;
  list_ = Run(QStringLiteral("lpstat"), {QStringLiteral("-e"), QStringLiteral("-d")},
              [this](const QString& why, const QByteArray& said) {
                list_ = nullptr;
                Q_EMIT PrintersRead(rules::ReadPrinterList(said.toStdString()), why);
              });
  if (list_->isOpen()) list_->closeWriteChannel();
}

void Printing::Print(const Job& job) {
  const QString paper =
      job.paper == QPageSize::Letter ? QStringLiteral("Letter") : QStringLiteral("A4");
  const QStringList arguments{QStringLiteral("-d"), job.printer, QStringLiteral("-t"), job.title,
                              QStringLiteral("-o"), QStringLiteral("media=") + paper,
                              QStringLiteral("-o"), QStringLiteral("print-scaling=none"),
                              // What is on the back would be cut apart.
                              QStringLiteral("-o"), QStringLiteral("sides=one-sided")};
  job_ = Run(QStringLiteral("lp"), arguments, [this](const QString& why, const QByteArray&) {
    job_ = nullptr;
    if (why.isEmpty()) {
      Q_EMIT Given();
    } else {
      Q_EMIT Failed(why);
    }
  });
  if (!job_->isOpen()) return;
  job_->write(job.pdf);
  job_->closeWriteChannel();
}

void Printing::Cancel() {
  if (job_ == nullptr) return;
  QProcess* const job = std::exchange(job_, nullptr);
  job->disconnect(this);
  Abandon(job);
}

}  // namespace views
