// SPDX-License-Identifier: MIT

#include "views/widgets/console_style.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolBar>
#include <algorithm>
#include <memory>

#include "views/widgets/contrast.h"

namespace views {
namespace {

// What can be told from its surroundings without being read.
constexpr double kVisible = 3;

QPalette Light() { return QApplication::style()->standardPalette(); }

// As a dark desktop gives it that says nothing of placeholders.
QPalette Dark() {
  QPalette palette(QColor(0x31, 0x36, 0x3B), QColor(0x2A, 0x2E, 0x32));
  palette.setColor(QPalette::Base, QColor(0x1B, 0x1E, 0x20));
  palette.setColor(QPalette::Highlight, QColor(0x3D, 0xAE, 0xE9));
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(role, QColor(0xFC, 0xFC, 0xFC));
  }
  palette.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
  return palette;
}

QImage Drawn(QStyle::PrimitiveElement element, const QPalette& palette, QStyle::State state) {
  QImage image(24, 24, QImage::Format_RGB32);
  image.fill(palette.color(QPalette::Window));
  QStyleOptionFocusRect focus;
  focus.backgroundColor = palette.color(QPalette::Window);
  QStyleOptionButton box;
  QStyleOption& option =
      element == QStyle::PE_FrameFocusRect ? static_cast<QStyleOption&>(focus) : box;
  option.rect = QRect(4, 4, 16, 16);
  option.palette = palette;
  option.state = state;
  QPainter painter(&image);
  QApplication::style()->drawPrimitive(element, &option, &painter);
  return image;
}

// The largest contrast to the window of what stands on the way from the left edge to the middle.
double EdgeContrast(const QImage& image, const QPalette& palette) {
  double largest = 1;
  for (int x = 0; x < 8; ++x) {
    largest = std::max(largest, Contrast(image.pixelColor(x, 12), palette.color(QPalette::Window)));
  }
  return largest;
}

TEST(ConsoleStyle, ABoxThatIsNotTickedIsSeenInEveryTheme) {
  for (const QPalette& palette : {Light(), Dark()}) {
    for (const auto element : {QStyle::PE_IndicatorCheckBox, QStyle::PE_IndicatorRadioButton}) {
      EXPECT_GE(
          EdgeContrast(Drawn(element, palette, QStyle::State_Enabled | QStyle::State_Off), palette),
          kVisible)
          << element << " on " << palette.color(QPalette::Window).name().toStdString();
    }
  }
}

TEST(ConsoleStyle, FieldsListsAndButtonsAreSeenOnADarkWindow) {
  QPalette contrast(Qt::black);
  contrast.setColor(QPalette::WindowText, Qt::white);
  for (const QPalette& palette : {Dark(), contrast}) {
    for (const auto element :
         {QStyle::PE_FrameLineEdit, QStyle::PE_Frame, QStyle::PE_PanelButtonCommand}) {
      EXPECT_GE(EdgeContrast(Drawn(element, palette, QStyle::State_Enabled), palette), kVisible)
          << element << " on " << palette.color(QPalette::Window).name().toStdString();
    }
    EXPECT_LT(EdgeContrast(Drawn(QStyle::PE_FrameLineEdit, palette,
                                 QStyle::State_Enabled | QStyle::State_ReadOnly),
                           palette),
              kVisible)
        << "what can only be read looks like no field";
  }
}

TEST(ConsoleStyle, TheHandleOfAScrollBarIsSeenOnADarkWindow) {
  QPalette contrast(Qt::black);
  contrast.setColor(QPalette::WindowText, Qt::white);
  for (const QPalette& palette : {Dark(), contrast}) {
    QStyleOptionSlider bar;
    bar.rect = QRect(0, 0, 16, 200);
    bar.palette = palette;
    bar.state = QStyle::State_Enabled;
    bar.orientation = Qt::Vertical;
    bar.maximum = 100;
    bar.pageStep = 100;
    bar.subControls = QStyle::SC_All;
    QImage image(bar.rect.size(), QImage::Format_RGB32);
    image.fill(palette.color(QPalette::Window));
    QPainter painter(&image);
    QApplication::style()->drawComplexControl(QStyle::CC_ScrollBar, &bar, &painter);
    painter.end();
    // At its top it fills the upper half of the way between the arrows.
    for (const int edge : {40, 90}) {
      double largest = 1;
      for (int y = edge; y < edge + 20; ++y) {
        largest =
            std::max(largest, Contrast(image.pixelColor(8, y), palette.color(QPalette::Window)));
      }
      EXPECT_EQ(largest >= kVisible, edge == 90)
          << largest << " on " << palette.color(QPalette::Window).name().toStdString();
    }
  }
}

TEST(ConsoleStyle, ABarThatCannotScrollHasNoFrame) {
  QStyleOptionSlider bar;
  bar.rect = QRect(0, 0, 16, 200);
  bar.palette = Dark();
  bar.state = QStyle::State_Enabled;
  bar.orientation = Qt::Vertical;
  bar.pageStep = 100;
  bar.subControls = QStyle::SC_All;
  const auto drawn = [&](const QStyle& style) {
    QImage image(bar.rect.size(), QImage::Format_RGB32);
    image.fill(bar.palette.color(QPalette::Window));
    QPainter painter(&image);
    style.drawComplexControl(QStyle::CC_ScrollBar, &bar, &painter);
    painter.end();
    return image;
  };
  const std::unique_ptr<const QStyle> plain(QStyleFactory::create(QStringLiteral("fusion")));
  EXPECT_EQ(drawn(*QApplication::style()), drawn(*plain));
  bar.maximum = 100;
  EXPECT_NE(drawn(*QApplication::style()), drawn(*plain)) << "one that can has it";
}

TEST(ConsoleStyle, TheLinesOfAGridAreSeenOnADarkGround) {
  constexpr double kFaint = 1.5;  // a line that everybody sees would hide what stands between
  QPalette contrast(Qt::black);
  contrast.setColor(QPalette::Text, Qt::white);
  contrast.setColor(QPalette::Base, Qt::black);
  for (const QPalette& palette : {Dark(), contrast}) {
    QStyleOptionViewItem option;
    option.palette = palette;
    const int line = QApplication::style()->styleHint(QStyle::SH_Table_GridLineColor, &option);
    EXPECT_GE(Contrast(QColor::fromRgb(static_cast<QRgb>(line)), palette.color(QPalette::Base)),
              kFaint)
        << palette.color(QPalette::Base).name().toStdString();
  }
}

TEST(ConsoleStyle, TheSelectedTabIsToldFromTheOthersOnADarkWindow) {
  QPalette contrast(Qt::black);
  contrast.setColor(QPalette::WindowText, Qt::white);
  contrast.setColor(QPalette::Highlight, QColor(0x00, 0xFF, 0xFF));
  for (const QPalette& palette : {Dark(), contrast}) {
    for (const bool isSelected : {false, true}) {
      QStyleOptionTab tab;
      tab.rect = QRect(0, 0, 100, 28);
      tab.palette = palette;
      tab.state = QStyle::State_Enabled;
      if (isSelected) tab.state |= QStyle::State_Selected;
      QImage image(tab.rect.size(), QImage::Format_RGB32);
      image.fill(palette.color(QPalette::Window));
      QPainter painter(&image);
      QApplication::style()->drawControl(QStyle::CE_TabBarTabShape, &tab, &painter);
      painter.end();
      double largest = 1;
      for (int y = 0; y < tab.rect.height(); ++y) {
        largest =
            std::max(largest, Contrast(image.pixelColor(50, y), palette.color(QPalette::Window)));
      }
      EXPECT_EQ(largest >= kVisible, isSelected)
          << largest << " on " << palette.color(QPalette::Window).name().toStdString();
    }
  }
}

TEST(ConsoleStyle, TheFocusIsSeenInEveryThemeOnceKeysAreUsed) {
  const auto state = QStyle::State_Enabled | QStyle::State_HasFocus;
  for (const QPalette& palette : {Light(), Dark()}) {
    EXPECT_GE(EdgeContrast(Drawn(QStyle::PE_FrameFocusRect, palette,
                                 state | QStyle::State_KeyboardFocusChange),
                           palette),
              kVisible);
    EXPECT_EQ(EdgeContrast(Drawn(QStyle::PE_FrameFocusRect, palette, state), palette), 1);
  }
}

TEST(ConsoleStyle, TheTitleOfAChildWindowCanBeReadInEveryTheme) {
  QPalette contrast(Qt::black);
  contrast.setColor(QPalette::WindowText, Qt::white);
  contrast.setColor(QPalette::Highlight, QColor(0x00, 0xFF, 0xFF));
  for (const QPalette& palette : {Light(), Dark(), contrast}) {
    for (const bool isActive : {true, false}) {
      QStyleOptionTitleBar title;
      title.rect = QRect(0, 0, 240, 24);
      title.palette = palette;
      title.text = QStringLiteral("MMMMMMMM");
      title.titleBarState = static_cast<int>(isActive ? QStyle::State_Active : QStyle::State_None);
      title.titleBarFlags = Qt::WindowTitleHint;
      title.subControls = QStyle::SC_TitleBarLabel;
      QImage image(title.rect.size(), QImage::Format_RGB32);
      QPainter painter(&image);
      QApplication::style()->drawComplexControl(QStyle::CC_TitleBar, &title, &painter);
      painter.end();
      double largest = 1;
      for (int x = 60; x < 180; ++x) {
        largest = std::max(largest, Contrast(image.pixelColor(x, 12), image.pixelColor(20, 12)));
      }
      EXPECT_GE(largest, kVisible)
          << isActive << " on " << palette.color(QPalette::Window).name().toStdString();
    }
  }
}

TEST(ConsoleStyle, APlaceholderCanBeReadOnADarkGround) {
  QPalette palette = Dark();
  QApplication::style()->polish(palette);
  const QColor ink = palette.color(QPalette::PlaceholderText);
  const QColor ground = palette.color(QPalette::Base);
  EXPECT_GE(Contrast(Blend(ink, ground, ink.alphaF()), ground), 4.5);
  QPalette light = Light();
  const QColor before = light.color(QPalette::PlaceholderText);
  QApplication::style()->polish(light);
  EXPECT_EQ(light.color(QPalette::PlaceholderText), before);
}

TEST(ConsoleStyle, TheGroundOfTipsIsLightOnADarkDesktopToo) {
  for (const QColor& desktop : {QColor(0x31, 0x36, 0x3B), QColor(Qt::black)}) {
    QPalette palette = Dark();
    palette.setColor(QPalette::ToolTipBase, desktop);
    palette.setColor(QPalette::ToolTipText, QColor(0xFC, 0xFC, 0xFC));
    QApplication::style()->polish(palette);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
      const QColor ground = palette.color(group, QPalette::ToolTipBase);
      EXPECT_LE(Contrast(ground, QColor(0xFE, 0xFF, 0xF4)), 1.1) << "the map's other band";
      EXPECT_GE(Contrast(ground, palette.color(group, QPalette::ToolTipText)), 7);
    }
  }
  QPalette light = Light();
  light.setColor(QPalette::ToolTipBase, QColor(0xC0, 0xE0, 0xFF));
  light.setColor(QPalette::ToolTipText, QColor(0x10, 0x20, 0x30));
  QApplication::style()->polish(light);
  EXPECT_EQ(light.color(QPalette::ToolTipBase), QColor(0xC0, 0xE0, 0xFF));
  EXPECT_EQ(light.color(QPalette::ToolTipText), QColor(0x10, 0x20, 0x30));
}

TEST(ConsoleStyle, TheLitMenuItemHasItsPictureForTheHighlight) {
  QPixmap plain(16, 16);
  plain.fill(Qt::red);
  QPixmap selected(16, 16);
  selected.fill(Qt::green);
  QStyleOptionMenuItem item;
  item.icon.addPixmap(plain, QIcon::Normal);
  item.icon.addPixmap(plain, QIcon::Active);
  item.icon.addPixmap(selected, QIcon::Selected);
  item.rect = QRect(0, 0, 200, 24);
  item.palette = Light();
  item.menuItemType = QStyleOptionMenuItem::Normal;
  item.maxIconWidth = 20;
  for (const bool lit : {false, true}) {
    item.state = QStyle::State_Enabled;
    if (lit) item.state |= QStyle::State_Selected;
    QImage image(item.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QApplication::style()->drawControl(QStyle::CE_MenuItem, &item, &painter);
    int red = 0;
    int green = 0;
    for (int x = 0; x < image.width(); ++x) {
      red += image.pixelColor(x, 12) == QColor(Qt::red) ? 1 : 0;
      green += image.pixelColor(x, 12) == QColor(Qt::green) ? 1 : 0;
    }
    EXPECT_EQ(red, lit ? 0 : 16);
    EXPECT_EQ(green, lit ? 16 : 0);
  }
}

// What a child window's title bar, tool bar and frame take of its height.
TEST(ConsoleStyle, ChildWindowKeepsItsFurnitureWithin52Pixels) {
  QMainWindow window;
  auto* const area = new QMdiArea;
  window.setCentralWidget(area);
  auto* const form = new QWidget;
  auto* const bar = new QToolBar(form);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  bar->setIconSize(QSize(16, 16));
  QPixmap pixmap(16, 16);
  pixmap.fill(Qt::red);
  bar->addAction(QIcon(pixmap), QStringLiteral("&Take Pgm"));
  QMdiSubWindow* const child = area->addSubWindow(form);
  window.show();
  child->show();
  child->resize(400, 300);
  EXPECT_LE(300 - form->height() + bar->sizeHint().height(), 52);
  EXPECT_LE(400 - form->width(), 5);
}

TEST(ConsoleStyle, MainWindowKeepsItsToolBarMargins) {
  QMainWindow window;
  QToolBar* const bar = window.addToolBar(QStringLiteral("Main"));
  const QStyle* const style = QApplication::style();
  const auto* const base = qobject_cast<const QProxyStyle*>(style)->baseStyle();
  for (const auto metric : {QStyle::PM_ToolBarFrameWidth, QStyle::PM_ToolBarItemMargin,
                            QStyle::PM_ToolBarItemSpacing}) {
    EXPECT_EQ(style->pixelMetric(metric, nullptr, bar), base->pixelMetric(metric, nullptr, bar));
  }
}

TEST(ConsoleStyle, AClickBesideTheHandleOfASliderIsAPage) {
  const QStyle* const style = QApplication::style();
  EXPECT_EQ(style->styleHint(QStyle::SH_Slider_PageSetButtons), Qt::LeftButton);
  EXPECT_EQ(style->styleHint(QStyle::SH_Slider_AbsoluteSetButtons), Qt::NoButton);
}

// A desktop that wants pictures on the buttons of dialogs.
class PicturesOnButtons : public QProxyStyle {
 public:
  PicturesOnButtons() : QProxyStyle(QStringLiteral("Fusion")) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 1;
    return QProxyStyle::styleHint(hint, option, widget, returned);
  }
};

TEST(ConsoleStyle, ButtonsOfDialogsAreAlikeOnEveryDesktop) {
  ConsoleStyle style;
  style.setBaseStyle(new PicturesOnButtons);
  QDialogButtonBox box;
  box.setStyle(&style);
  EXPECT_TRUE(box.addButton(QDialogButtonBox::Ok)->icon().isNull());
}

}  // namespace
}  // namespace views
