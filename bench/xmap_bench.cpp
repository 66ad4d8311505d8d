// SPDX-License-Identifier: MIT
//
// The crosspoint map, from a report of the switcher to the pixels.
//
//   DecodeRow     one 0xF3 message decoded, its row drawn into the open view and painted
//   RefreshMap    every row reported (the marks of all change), then one paint
//   FullRepaint   grid and both headers painted whole, in a view of 1920 x 1000
//   ScrolledPaint the same, scrolled to the far corner
//   RowPaint      one row painted
//   InhibitAll    the inhibits of all cells set or taken back, stored and painted
//   StockRepaint  the same matrix in a plain table view: marks as decorations, default headers
//
// The view is painted as on a screen, into its window's backing store, without a display
// server behind it.

#include <QAbstractButton>
#include <QAbstractTableModel>
#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QMessageBox>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <cstdint>
#include <string>
#include <vector>

#include "bench/suite.h"
#include "switcher/decoder.h"
#include "switcher/wire/messages/crosspoint_row.h"
#include "tests/views/xmap/xmap_console.h"
#include "tools/stage/application.h"
#include "views/xmap/marks.h"
#include "views/xmap/xmap_look.h"

namespace {

// Rows go straight to the view, as they do in the program.
class ToView : public switcher::SwitcherEvents {
 public:
  explicit ToView(views::XmapView& view) : view_(view) {}
  void CrosspointRowChanged(int output, int mode) override { view_.UpdateXmap(output, mode); }
  void GainsChanged() override {}
  void TallyChanged() override {}
  void LabelsChanged(int) override {}
  void InhibitsChanged(int) override {}
  void RelaysChanged(int) override {}
  void ButtonsChanged(int) override {}
  void OptosChanged() override {}
  void MessageRefused(std::string_view, switcher::DecodeStatus) override {}

 private:
  views::XmapView& view_;
};

// Counts what is painted, so that a benchmark cannot measure nothing.
class PaintCounter : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      for (const QRect& rect : static_cast<QPaintEvent*>(event)->region()) {
        pixels_ += std::int64_t{rect.width()} * rect.height();
      }
    }
    return false;
  }

  // To be called when the measuring is over: the pixels painted in a turn.
  void Report(benchmark::State& state) const {
    if (pixels_ == 0) state.SkipWithError("nothing was painted");
    state.counters["pixels"] =
        benchmark::Counter(static_cast<double>(pixels_), benchmark::Counter::kAvgIterations);
  }

 private:
  std::int64_t pixels_ = 0;
};

// An open map with about one crosspoint in twelve made, 1920 x 1000.
class OpenMap {
 public:
  explicit OpenMap(int channels) : console_(channels), channels_(channels) {
    console_.window->resize(2000, 1150);
    for (int o = 1; o <= channels; ++o) {
      for (int i = 1; i <= channels; ++i) Set(o, i, (o * 7 + i * 13) % 12 == 0);
    }
    console_.Open();
    console_.subWindow->setGeometry(0, 0, 1920 + 5, 1000 + 52);
    Paint();
    Table().viewport()->installEventFilter(&counter_);
  }

  void Report(benchmark::State& state) const { counter_.Report(state); }

  void Set(int output, int input, bool made) {
    console_.model.CrosspointMap.At(output, input) = made ? 1 : 0;
  }
  // Every crosspoint of a row the other way round.
  void Flip(int output) {
    for (int i = 1; i <= channels_; ++i) {
      console_.model.CrosspointMap.At(output, i) ^= 1;
    }
  }

  // Paints what is to be painted.
  static void Paint() { QCoreApplication::sendPostedEvents(); }
  void PaintAll() {
    Table().viewport()->update();
    Table().horizontalHeader()->viewport()->update();
    Table().verticalHeader()->viewport()->update();
    Paint();
  }

  QTableView& Table() { return static_cast<QTableView&>(console_.Grid()); }
  views::XmapView& View() { return *console_.view; }
  model::SystemModel& Model() { return console_.model; }
  int Channels() const { return channels_; }
  // As station 1 has them.
  std::string StoredInhibits() { return console_.Text(1, "Inhibits"); }

 private:
  PaintCounter counter_;
  test::XmapConsole console_;
  int channels_;
};

// The same matrix for a plain table view.
class StockModel : public QAbstractTableModel {
 public:
  explicit StockModel(int channels) : channels_(channels), mark_(20, 20) {
    mark_.fill(Qt::transparent);
    QPainter painter(&mark_);
    views::PaintMark(painter, mark_.rect(), rules::Mark::Crosspoint, Qt::darkBlue);
  }
  int rowCount(const QModelIndex&) const override { return channels_; }
  int columnCount(const QModelIndex&) const override { return channels_; }
  QVariant data(const QModelIndex& index, int role) const override {
    const bool made = ((index.row() + 1) * 7 + (index.column() + 1) * 13) % 12 == 0;
    if (role == Qt::DecorationRole && made) return mark_;
    if (role == Qt::BackgroundRole) {
      return QBrush(index.row() / 2 % 2 == 0 ? QColor(255, 255, 220) : views::kPlainBand);
    }
    return {};
  }

 private:
  int channels_;
  QPixmap mark_;
};

// A whole 0xF3 message of one output with every eighth crosspoint made, or none.
switcher::Bytes RowMessage(int channels, int output, bool made) {
  switcher::Bytes message{0xF3};
  int checksum = 0;
  const auto append = [&](int value) {
    message.push_back(static_cast<std::uint8_t>(value & 0x7F));
    message.push_back(static_cast<std::uint8_t>(value / 128));
    checksum = (checksum + value) % 128;
  };
  append(output - 1);
  append(0);
  for (int group = 0; group < channels / 8; ++group) append(made ? 0x81 : 0);
  message.push_back(static_cast<std::uint8_t>(checksum));
  message.push_back(0xFF);
  return message;
}

void DecodeRow(benchmark::State& state) {
  const int channels = static_cast<int>(state.range(0));
  OpenMap map(channels);
  ToView events(map.View());
  test::RecordingReporter reporter;
  stations::Changes changes;
  switcher::Decoder decoder({.model = map.Model(),
                             .database = [] { return nullptr; },
                             .reporter = reporter,
                             .changes = changes,
                             .observers = {events}});
  const switcher::Bytes messages[] = {RowMessage(channels, 3, true),
                                      RowMessage(channels, 3, false)};
  std::size_t next = 0;
  for (auto _ : state) {
    decoder.Decode(messages[next++ % 2]);
    OpenMap::Paint();
  }
  if (map.Model().CrosspointMap.At(3, 1) != next % 2) state.SkipWithError("row was refused");
  map.Report(state);
}

void RefreshMap(benchmark::State& state) {
  OpenMap map(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    for (int output = 1; output <= map.Channels(); ++output) {
      state.PauseTiming();
      map.Flip(output);
      state.ResumeTiming();
      map.View().UpdateXmap(output, 0);
    }
    OpenMap::Paint();
  }
  map.Report(state);
}

void FullRepaint(benchmark::State& state) {
  OpenMap map(static_cast<int>(state.range(0)));
  for (auto _ : state) map.PaintAll();
  map.Report(state);
}

void ScrolledPaint(benchmark::State& state) {
  OpenMap map(static_cast<int>(state.range(0)));
  map.Table().horizontalScrollBar()->setValue(map.Table().horizontalScrollBar()->maximum());
  map.Table().verticalScrollBar()->setValue(map.Table().verticalScrollBar()->maximum());
  OpenMap::Paint();
  for (auto _ : state) map.PaintAll();
  map.Report(state);
}

void StockRepaint(benchmark::State& state) {
  StockModel model(static_cast<int>(state.range(0)));
  QTableView table;
  table.setModel(&model);
  table.horizontalHeader()->setMinimumSectionSize(20);
  table.horizontalHeader()->setDefaultSectionSize(model.columnCount({}) > 99 ? 23 : 20);
  table.verticalHeader()->setDefaultSectionSize(20);
  table.resize(1920, 1000);
  table.show();
  if (!QTest::qWaitForWindowExposed(&table)) state.SkipWithError("no window");
  PaintCounter counter;
  table.viewport()->installEventFilter(&counter);
  for (auto _ : state) {
    table.viewport()->update();
    table.horizontalHeader()->viewport()->update();
    table.verticalHeader()->viewport()->update();
    OpenMap::Paint();
  }
  counter.Report(state);
}

void InhibitAll(benchmark::State& state) {
  OpenMap map(static_cast<int>(state.range(0)));
  for (int output = 1; output <= map.Channels(); ++output) {
    for (int input = 1; input <= map.Channels(); ++input) map.Set(output, input, false);
  }
  map.View().UpdateXmap(model::kAll, 0);
  QTest::keyClick(&map.Table(), Qt::Key_Home, Qt::ControlModifier);
  QTest::keyClick(&map.Table(), Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
  for (auto _ : state) {
    const std::string before = map.StoredInhibits();
    map.View().findChild<QAction*>(QStringLiteral("ID_ToggleInhibit"))->trigger();
    auto* const question =
        map.View().window()->findChild<QMessageBox*>(QStringLiteral("aidInhibitQuestion"));
    if (question == nullptr) {
      state.SkipWithError("nothing was asked");
      break;
    }
    for (const QString& name : {QStringLiteral("aidInhibitAll"), QStringLiteral("aidRemoveAll")}) {
      if (auto* const answer = question->findChild<QPushButton*>(name)) answer->click();
    }
    OpenMap::Paint();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (map.StoredInhibits() == before) {
      state.SkipWithError("nothing was stored");
      break;
    }
  }
  map.Report(state);
}

void RowPaint(benchmark::State& state) {
  OpenMap map(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    map.Flip(3);
    state.ResumeTiming();
    map.View().UpdateXmap(3, 0);
    OpenMap::Paint();
  }
  map.Report(state);
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const stage::Application application(argc, argv);
  bench::Suite suite(&argc, argv);
  constexpr auto kMicroseconds = benchmark::kMicrosecond;
  for (const int channels : {64, 256}) {
    const std::string size = ", " + std::to_string(channels) + " channels";
    // A row has to be done before the next tick decodes another.
    suite.Measure({.what = "map: a row decoded, the view updated and painted" + size,
                   .run = DecodeRow,
                   .size = channels,
                   .unit = kMicroseconds,
                   .limit = 5000});
    suite.Measure({.what = "map: a row painted" + size,
                   .run = RowPaint,
                   .size = channels,
                   .unit = kMicroseconds});
    suite.Measure({.what = "map: all rows refreshed and painted" + size,
                   .run = RefreshMap,
                   .size = channels,
                   .limit = channels == 64 ? 2 : 16});
    suite.Measure({.what = "map: all inhibits set, asked, stored and painted" + size,
                   .run = InhibitAll,
                   .size = channels,
                   .limit = bench::kViewMilliseconds});
    suite.Compare({.what = "map: painted whole, 1920 × 1000" + size,
                   .run = FullRepaint,
                   .size = channels,
                   .limit = 8},
                  {.name = "a plain QTableView", .run = StockRepaint});
    suite.Measure({.what = "map: painted whole in the far corner" + size,
                   .run = ScrolledPaint,
                   .size = channels,
                   .limit = 8});
  }
  suite.Run();
  return suite.Finish();
}
