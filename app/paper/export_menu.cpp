// SPDX-License-Identifier: MIT

#include "app/paper/export_menu.h"

#include <QAction>
#include <QBuffer>
#include <filesystem>
#include <system_error>
#include <vector>

#include "app/paper/say_written.h"
#include "files/whole_file.h"
#include "stations/texts.h"
#include "views/export/sheet_pdf.h"
#include "views/rules/export_sheets.h"
#include "views/rules/xmap_records.h"
#include "views/widgets/save_dialog.h"

namespace app {
namespace {

struct Item {
  Export what;
  const char* name;
  const char* caption;
  const char* fileName;
};

constexpr Item kItems[] = {
    {Export::MapCsv, "aidExportMapCsv",
     QT_TRANSLATE_NOOP("app::ExportMenu", "Crosspoint Map As &CSV…"), "map.csv"},
    {Export::MapPdf, "aidExportMapPdf",
     QT_TRANSLATE_NOOP("app::ExportMenu", "Crosspoint &Map As PDF…"), "map.pdf"},
    {Export::LabelsCsv, "aidExportLabelsCsv",
     QT_TRANSLATE_NOOP("app::ExportMenu", "Station &Labels As CSV…"), "labels.csv"},
    {Export::LabelsPdf, "aidExportLabelsPdf",
     QT_TRANSLATE_NOOP("app::ExportMenu", "&Station Labels As PDF…"), "labels.pdf"},
    {Export::ProgrammingCsv, "aidExportProgrammingCsv",
     QT_TRANSLATE_NOOP("app::ExportMenu", "&Button Programming As CSV…"), "programming.csv"},
};

// The map as it is in the model and the database, whether its view is open or not.
model::Status DrawMap(jet::RecordSet& stations, rules::XmapGrid* grid) {
  grid->Clear();
  constexpr auto kRead = stations::ReadAvailableTexts;
  if (model::Status drawn = rules::DrawLabels(stations, kRead, grid); !drawn.ok()) return drawn;
  rules::ChannelSet changed;
  model::Status drawn = rules::DrawInhibits(stations, kRead, grid, &changed);
  grid->UpdateXmap(model::kAll, 0);
  return drawn;
}

}  // namespace

ExportMenu::ExportMenu(const Services& services) : services_(services) {
  QMenu& menu = services_.menu;
  for (const Item& item : kItems) {
    auto* const action = new QAction(tr(item.caption), &menu);
    action->setObjectName(QLatin1String(item.name));
    connect(action, &QAction::triggered, this, [this, item] {
      AskWhereTo(item.what, tr(item.caption).remove(u'…').remove(u'&'),
                 QLatin1String(item.fileName));
    });
    menu.addAction(action);
  }
}

void ExportMenu::AskWhereTo(Export what, const QString& title, const QString& fileName) {
  // What is typed belongs to what is exported.
  if (!services_.storeEdits()) return;
  const QString suffix = fileName.section(u'.', -1);
  views::AskWhereToSave(
      services_.window, *this,
      {.name = QStringLiteral("aidExportDialog"),
       .title = title,
       .filters = tr("%1 files (*.%2);;All files (*)").arg(suffix.toUpper(), suffix),
       .fileName = fileName},
      [this, what](const QString& path) { Write(what, path); });
}

bool ExportMenu::Write(Export what, const QString& path) {
  rules::XmapGrid grid(services_.data.model);
  rules::Sheet labels;
  std::vector<rules::KeySheet> keys;
  const model::Status read = views::WithStations(services_.data, [&](jet::RecordSet& stations) {
    switch (what) {
      case Export::MapCsv:
      case Export::MapPdf:
        return DrawMap(stations, &grid);
      case Export::LabelsCsv:
      case Export::LabelsPdf:
        return rules::ReadLabelSheet(stations, &labels);
      default:
        return rules::ReadKeySheets(stations, services_.data.model, &keys);
    }
  });
  if (!read.ok()) {
    views::ShowFailure(services_.data, "Error Reading What Is To Be Exported", read);
    return false;
  }

  bool drawn = true;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);  // memory can always be written
  switch (what) {
    case Export::MapCsv:
      bytes = QByteArray::fromStdString(rules::ToCsv(rules::MapSheet(grid)));
      break;
    case Export::MapPdf:
      drawn = views::WriteMapPdf(buffer, tr("Crosspoint Map"), grid);
      break;
    case Export::LabelsCsv:
      bytes = QByteArray::fromStdString(rules::ToCsv(labels));
      break;
    case Export::LabelsPdf:
      drawn = views::WriteSheetPdf(buffer, tr("Station Labels"), labels);
      break;
    case Export::ProgrammingCsv:
      bytes = QByteArray::fromStdString(rules::ToCsv(rules::ProgrammingSheet(keys)));
      break;
  }
  const std::filesystem::path file(path.toStdU16String());
  const files::Outcome written =
      drawn ? files::Replace(file, {bytes.constData(), static_cast<std::size_t>(bytes.size())})
            : files::Failure("draw", file, std::make_error_code(std::errc::not_enough_memory));
  if (!SayWritten(services_.data, path, written)) return false;
  Q_EMIT NoteRequested(tr("Written: %1").arg(path));
  return true;
}

}  // namespace app
