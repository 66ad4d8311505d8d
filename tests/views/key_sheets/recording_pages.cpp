// SPDX-License-Identifier: MIT

#include "tests/views/key_sheets/recording_pages.h"

#include <QPaintEngine>
#include <algorithm>

namespace test {
namespace {

// Takes what is not kept.
QBuffer& Nowhere() {
  static QBuffer buffer;
  return buffer;
}

}  // namespace

class RecordingPages::Engine : public QPaintEngine {
 public:
  explicit Engine(RecordingPages& pages) : QPaintEngine(QPaintEngine::AllFeatures), pages_(pages) {}

  bool begin(QPaintDevice* /*device*/) override {
    works_ = NewPage();
    return true;
  }
  bool end() override {
    pages_.drawn_.isEnded = true;
    return works_;
  }
  void updateState(const QPaintEngineState& /*state*/) override {}
  void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/, const QRectF& /*of*/) override {}
  void drawPath(const QPainterPath& /*path*/) override {}
  void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
  void drawRects(const QRectF* /*rects*/, int /*count*/) override {}
  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    if (!works_) return;
    pages_.drawn_.pages.back().push_back(item.text().toStdString());
    pages_.drawn_.lowest = std::max(pages_.drawn_.lowest, at.y());
  }
  Type type() const override { return User; }

  bool NewPage() {
    works_ = static_cast<int>(pages_.drawn_.pages.size()) + 1 != pages_.failsAt_;
    if (works_) pages_.drawn_.pages.emplace_back();
    return works_;
  }

 private:
  RecordingPages& pages_;
  bool works_ = true;
};

RecordingPages::RecordingPages(Drawn& drawn, int failsAt)
    : QPdfWriter(&Nowhere()),
      drawn_(drawn),
      failsAt_(failsAt),
      engine_(std::make_unique<Engine>(*this)) {}

RecordingPages::~RecordingPages() = default;

bool RecordingPages::newPage() { return engine_->NewPage(); }

QPaintEngine* RecordingPages::paintEngine() const { return engine_.get(); }

int RecordingPages::metric(PaintDeviceMetric what) const {
  switch (what) {
    case PdmWidth:
      return 786;
    case PdmHeight:
      return drawn_.height;
    case PdmDevicePixelRatio:
      return 1;
    case PdmDevicePixelRatioScaled:
      return static_cast<int>(devicePixelRatioFScale());
    default:
      return 72;
  }
}

}  // namespace test
