// SPDX-License-Identifier: MIT

#include "views/xmap/xmap_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace views {
namespace {

using rules::ChannelSet;
using rules::Mark;

class XmapModelTest : public testing::Test {
 protected:
  XmapModelTest() {
    system_.ChannelCount = 8;
    system_.AllocateMap();
    grid_.Clear();
    using Labels = std::vector<std::optional<std::string>>;
    grid_.UpdateOutputLabels(Labels(8, "OUT"));
    grid_.UpdateInputLabels(Labels(8, "<b>IN"));
  }

  model::SystemModel system_;
  rules::XmapGrid grid_{system_};
  model::Locks locks_;
  XmapModel model_{grid_, locks_};
};

TEST_F(XmapModelTest, IsAProperModel) {
  const QAbstractItemModelTester tester(&model_,
                                        QAbstractItemModelTester::FailureReportingMode::Warning);
  EXPECT_EQ(model_.rowCount(), 8);
  EXPECT_EQ(model_.columnCount(), 8);
}

TEST_F(XmapModelTest, MarksAndWords) {
  constexpr const char* kWords[] = {"No crosspoint", "Crosspoint", "Inhibited",
                                    "Priority crosspoint", "Reserved mark"};
  const QModelIndex index = model_.CellOf(2, 4);
  EXPECT_EQ(index.row(), 1);
  EXPECT_EQ(index.column(), 3);
  for (int mark = 0; mark <= 4; ++mark) {
    grid_.SetMark(2, 4, static_cast<Mark>(mark));
    EXPECT_EQ(model_.data(index, XmapModel::MarkRole).toInt(), mark);
    EXPECT_EQ(model_.data(index, Qt::ToolTipRole).toString().toStdString(),
              std::string("Out 02  OUT  <  In 04  <b>IN\n") + kWords[mark]);
    EXPECT_EQ(model_.data(index, Qt::AccessibleTextRole).toString().toStdString(),
              std::string("Out 02  OUT  <  In 04  <b>IN: ") + kWords[mark]);
  }
}

TEST_F(XmapModelTest, NoCellHasNoText) {
  EXPECT_FALSE(model_.CellOf(0, 1).isValid());
  EXPECT_FALSE(model_.CellOf(9, 1).isValid());
  EXPECT_FALSE(model_.data(QModelIndex(), Qt::AccessibleTextRole).isValid());
  EXPECT_EQ(XmapModel::Output(QModelIndex()), 0);
}

TEST_F(XmapModelTest, ChangedRowsAreToldInRuns) {
  QSignalSpy changed(&model_, &QAbstractItemModel::dataChanged);
  model_.OutputsChanged(ChannelSet());
  EXPECT_EQ(changed.count(), 0);
  model_.OutputsChanged(ChannelSet().set(1).set(2).set(5).set(7).set(8));
  ASSERT_EQ(changed.count(), 3);
  constexpr int kRuns[][2] = {{0, 1}, {4, 4}, {6, 7}};
  for (int run = 0; run < 3; ++run) {
    EXPECT_EQ(changed[run][0].toModelIndex().row(), kRuns[run][0]);
    EXPECT_EQ(changed[run][1].toModelIndex().row(), kRuns[run][1]);
    EXPECT_EQ(changed[run][0].toModelIndex().column(), 0);
    EXPECT_EQ(changed[run][1].toModelIndex().column(), 7);
  }
}

TEST_F(XmapModelTest, HeadersAreTheLabels) {
  EXPECT_EQ(model_.headerData(0, Qt::Vertical).toString(), QStringLiteral("OUT"));
  EXPECT_EQ(model_.headerData(7, Qt::Horizontal, Qt::AccessibleTextRole).toString(),
            QStringLiteral("In 08  <b>IN"));
  EXPECT_FALSE(model_.headerData(8, Qt::Vertical).isValid());
}

}  // namespace
}  // namespace views
