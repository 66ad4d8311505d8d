// SPDX-License-Identifier: MIT

#include "views/programming/station_heading.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace views {
namespace {

constexpr int kLabelWidth = 66;
constexpr int kLargestWidth = 360;  // of all; the labels have eight characters
constexpr int kPortWidth = 36;
constexpr int kSpacing = 3;

// The columns of the layout; the labels have the room that is over.
constexpr int kPortColumn = 2;

}  // namespace

StationHeading::StationHeading(QWidget* parent) : QWidget(parent) {
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(kSpacing);
  grid->setVerticalSpacing(2);
  label_ = AddField(*grid, "txtStaLabel", "lblStaLabel", "Station Name", "Sta. 01",
                    "Label For Switcher Output Channel Associated With This Station");
  inputLabel_ = AddField(*grid, "txtInptLabel", "lblInptLabel", "Input Name", "Input 01",
                         "Label For Switcher Input Channel Associated With This Station");
  port_ = AddField(*grid, "txtPortNmbr", "lblPortNmbr", "Port", "",
                   "RS-485 Serial Control Port Associated With This Station");
  FitCaptions();
  ShowReadOnly();
  grid->setRowStretch(2, 1);
  setMaximumWidth(kLargestWidth);
}

StationHeading::Field StationHeading::AddField(QGridLayout& grid, const char* name,
                                               const char* captionName, const char* caption,
                                               const char* text, const char* tip) {
  const int column = grid.count() / 2;
  auto* const label = new QLabel(QString::fromLatin1(caption), this);
  label->setObjectName(QString::fromLatin1(captionName));
  auto* const field = new QLineEdit(QString::fromLatin1(text), this);
  field->setObjectName(QString::fromLatin1(name));
  field->setToolTip(QString::fromLatin1(tip));
  field->setAccessibleName(label->text());
  field->setAccessibleDescription(field->toolTip());
  field->setReadOnly(true);
  if (column == kPortColumn) {
    field->setFixedWidth(kPortWidth);
  } else {
    field->setMinimumWidth(kLabelWidth);
    // The number keeps its place while the labels are hidden.
    for (QWidget* const widget : {static_cast<QWidget*>(label), static_cast<QWidget*>(field)}) {
      QSizePolicy policy(QSizePolicy::Ignored, widget->sizePolicy().verticalPolicy());
      policy.setRetainSizeWhenHidden(true);
      widget->setSizePolicy(policy);
    }
  }
  grid.addWidget(label, 0, column);
  grid.addWidget(field, 1, column);
  grid.setColumnStretch(column, column == kPortColumn ? 0 : 1);
  return {label, field};
}

void StationHeading::FitCaptions() {
  for (const Field& field : {label_, inputLabel_, port_}) {
    const QString caption = field.caption->text();
    field.caption->setMinimumWidth(field.caption->fontMetrics().horizontalAdvance(caption));
  }
}

// On the ground of the window: what looks like a field for text asks to be typed into.
void StationHeading::ShowReadOnly() {
  for (const Field& field : {label_, inputLabel_, port_}) {
    QPalette colours = palette();
    colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    field.text->setPalette(colours);
  }
}

void StationHeading::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitCaptions();
  if (event->type() == QEvent::PaletteChange) ShowReadOnly();
}

void StationHeading::ShowStation(const QString& label, const QString& inputLabel,
                                 const QString& number) {
  label_.text->setText(label);
  inputLabel_.text->setText(inputLabel);
  port_.text->setText(number);
}

void StationHeading::ShowFor(const QString& portCaption, bool withLabels) {
  port_.caption->setText(portCaption);
  port_.text->setAccessibleName(portCaption);
  for (const Field& field : {label_, inputLabel_}) {
    field.caption->setVisible(withLabels);
    field.text->setVisible(withLabels);
  }
}

}  // namespace views
