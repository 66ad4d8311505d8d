// SPDX-License-Identifier: MIT

#include "app/run/opening.h"

#include "app/run/start_up.h"
#include "app/run/unusual_files.h"

namespace app {

void Opening::Run() {
  const Services& all = services_;
  if (!all.folder.lacks.ok()) {
    model::ReportError(all.boxes, "Preparing User Folder", all.folder.lacks);
  }
  if (!all.places.Problem().ok()) {
    model::ReportError(all.boxes, "Reading Window Settings", all.places.Problem());
  }
  all.place.Restore();
  SayWhatIsUnusual({.folder = all.folder,
                    .database = all.files,
                    .status = all.window.Status(),
                    .reporter = all.boxes});
  Load();
  all.journal.Begin();
  all.rescue.Begin();
  all.unsent.Begin(all.sentFile.Read());
  all.damage.Tell();
  all.backups.BeginDays();
  Q_EMIT Loaded();
  all.window.PollTimer().start();
  all.window.DecodeTimer().start();
  all.views.ShowButtons();
  all.views.ShowAlphas();
  all.views.ShowXmap();
  all.window.show();
  all.boxes.ShowOver(&all.window);
}

void Opening::Load() {
  const Services& all = services_;
  config::IniFile settings;
  if (const auto status = all.settings.Read(&settings); !status.ok()) {
    model::ReportError(all.boxes, "Reading Configuration File", status);
  }
  all.locks.Begin();  // before a panel is admitted
  StartUp({.model = all.model,
           .files = all.files,
           .listener = all.listener,
           .link = all.link,
           .reporter = all.boxes})
      .Run(all.folder.path.toStdString(), settings);
}

}  // namespace app
