// SPDX-License-Identifier: MIT

#include "app/log/channel_labels.h"

#include <QCoreApplication>
#include <string>

namespace app {
namespace {

// Without the blanks that fill it up; where nothing is left, the number in words.
QString LabelOr(const std::string& label, const char* number, int channel) {
  const QString text = QString::fromStdString(label).trimmed();
  if (!text.isEmpty()) return text;
  return QCoreApplication::translate("ChannelLabels", number).arg(channel);
}

}  // namespace

QString ChannelLabels::Output(int output) {
  return LabelOr(texts_.Label(output), QT_TRANSLATE_NOOP("ChannelLabels", "Out %1"), output);
}

QString ChannelLabels::Input(int input) {
  return LabelOr(texts_.InLabel(input), QT_TRANSLATE_NOOP("ChannelLabels", "In %1"), input);
}

}  // namespace app
