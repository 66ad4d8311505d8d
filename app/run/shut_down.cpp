// SPDX-License-Identifier: MIT

#include "app/run/shut_down.h"

#include <QCoreApplication>
#include <QStringList>

namespace app {

bool ShutDown::Run() {
  if (ended_) return true;
  if (!terminating_ && !services_.mayClose()) return false;
  services_.transfers.CancelNow();
  Q_EMIT Ending();
  // What is typed and cannot be stored has been reported; the window stays, so that it can be
  // mended or given up.  A system that ends the program does not wait for that, and all that was
  // stored before must not be lost for it.
  if (!services_.views.StoreEdits() && !terminating_) return false;
  services_.place.Save();
  bool saved = false;
  Q_EMIT SavingDatabase();
  if (const model::Status status = services_.files.SaveAndClose(&saved); !status.ok()) {
    OfferToCloseWithoutSaving(status);
    terminating_ = false;
    return false;
  }
  if (saved) Q_EMIT DatabaseSaved();
  Q_EMIT AllSaved(saved);
  EndRun();
  return true;
}

// A protection or a full disk that nobody can do anything about must not hold the console for ever.
void ShutDown::OfferToCloseWithoutSaving(const model::Status& status) {
  services_.boxes.ShowOffering(
      model::ErrorReporter::Icon::Critical, "Database Error",
      model::ErrorText("Error Saving Database File", status),
      {{.name = QStringLiteral("aidCloseWithoutSaving"),
        .caption = tr("Close Without Saving"),
        .action = [this] { CloseWithoutSaving(); },
        .tip = tr("Leaves Tesk.mdb as it is, keeps what was edited in a file of its own beside it, "
                  "and closes the console.")}});
}

// Where it went is said before the program is gone.
void ShutDown::CloseWithoutSaving() {
  if (!services_.files.IsOpen()) return;  // another box of this kind was answered before
  services_.transfers.CancelNow();
  Q_EMIT Ending();
  std::filesystem::path kept;
  const model::Status status = services_.files.CloseWithoutSaving(&kept);
  const QString name = QString::fromStdU16String(kept.u16string());
  QStringList lines{tr("Closed Without Saving"), QString(),
                    tr("What was edited is in this file: %1").arg(name)};
  if (kept == services_.workingCopy) {
    lines.append(tr("Copy it before the console is started again: the start deletes it."));
  }
  if (!status.ok()) lines.append(QString::fromStdString(status.Description()));
  services_.boxes.Show(model::ErrorReporter::Icon::Exclamation, "Orvo Intercom Control",
                       lines.join(u'\r').toStdString());
  EndRun();
  services_.window.close();
}

// What the shut-down does when nothing keeps it from ending any more.
void ShutDown::EndRun() {
  if (services_.port.IsOpen()) services_.port.Close();
  services_.window.PollTimer().stop();
  services_.window.DecodeTimer().stop();
  if (const model::Status status =
          services_.settings.Write(services_.model, services_.port.Number());
      !status.ok()) {
    model::ReportError(services_.boxes, "Writing Configuration File", status);
  }
  services_.listener.Stop();
  services_.panels.CloseAll();
  services_.views.CloseAll();
  Q_EMIT AllClosed();
  ended_ = true;
  EndProgram();
}

// The last reports are read before the program ends, unless the system wants it gone.
void ShutDown::EndProgram() {
  if (terminating_ || services_.boxes.IsEmpty()) {
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    return;
  }
  connect(&services_.boxes, &MessageBoxes::Emptied, qApp, &QCoreApplication::quit,
          Qt::QueuedConnection);
  services_.boxes.ShowOver(nullptr);
}

void ShutDown::Terminate() {
  terminating_ = true;
  if (ended_) {
    EndProgram();  // only the last reports stood in the way
  } else {
    services_.window.close();
  }
}

bool ShutDown::EndSession() {
  if (!ended_ && !services_.views.StoreEdits()) return false;
  terminating_ = true;
  return services_.window.close();
}

}  // namespace app
