// SPDX-License-Identifier: MIT

#include "tests/views/key_sheets/recording_printer.h"

#include <QPaintEngine>
#include <QPrintEngine>
#include <algorithm>

namespace test {

class RecordingPrinter::Engine : public QPaintEngine, public QPrintEngine {
 public:
  Engine(Printed& printed, int failsAt)
      : QPaintEngine(QPaintEngine::AllFeatures), printed_(printed), failsAt_(failsAt) {}

  bool begin(QPaintDevice* /*device*/) override {
    state_ = QPrinter::Active;
    newPage();
    return true;
  }
  bool end() override {
    printed_.isEnded = true;
    if (state_ == QPrinter::Active) state_ = QPrinter::Idle;
    return true;
  }
  void updateState(const QPaintEngineState& /*state*/) override {}
  void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/, const QRectF& /*of*/) override {}
  void drawPath(const QPainterPath& /*path*/) override {}
  void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
  void drawRects(const QRectF* /*rects*/, int /*count*/) override {}
  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    if (state_ != QPrinter::Active) return;
    printed_.pages.back().push_back(item.text().toStdString());
    printed_.lowest = std::max(printed_.lowest, at.y());
  }
  Type type() const override { return User; }

  void setProperty(PrintEnginePropertyKey /*key*/, const QVariant& /*value*/) override {}
  QVariant property(PrintEnginePropertyKey key) const override {
    return key == PPK_PrinterName ? QStringLiteral("Office") : QVariant();
  }
  bool newPage() override {
    if (state_ != QPrinter::Active) return false;
    if (static_cast<int>(printed_.pages.size()) + 1 == failsAt_) {
      state_ = QPrinter::Error;
      return false;
    }
    printed_.pages.emplace_back();
    return true;
  }
  bool abort() override {
    printed_.isAborted = true;
    state_ = QPrinter::Aborted;
    return true;
  }
  int metric(QPaintDevice::PaintDeviceMetric what) const override {
    switch (what) {
      case QPaintDevice::PdmWidth:
        return 786;
      case QPaintDevice::PdmHeight:
        return printed_.height;
      case QPaintDevice::PdmDevicePixelRatio:
        return 1;
      case QPaintDevice::PdmDevicePixelRatioScaled:
        return static_cast<int>(QPaintDevice::devicePixelRatioFScale());
      default:
        return 72;
    }
  }
  QPrinter::PrinterState printerState() const override { return state_; }

 private:
  Printed& printed_;
  const int failsAt_;
  QPrinter::PrinterState state_ = QPrinter::Idle;
};

RecordingPrinter::RecordingPrinter(Printed& printed, int failsAt)
    : engine_(std::make_unique<Engine>(printed, failsAt)) {
  setEngines(engine_.get(), engine_.get());
}

RecordingPrinter::~RecordingPrinter() = default;

}  // namespace test
