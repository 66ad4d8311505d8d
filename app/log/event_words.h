// SPDX-License-Identifier: MIT
//
// What happens, in words.

#ifndef APP_LOG_EVENT_WORDS_H_
#define APP_LOG_EVENT_WORDS_H_

#include <QString>
#include <string_view>

#include "app/log/channel_labels.h"
#include "app/log/reported_rows.h"
#include "switcher/wire/decode_status.h"

namespace app {

// A message of the switcher that was refused: "Refused: Output 12 Crosspoint Map, Failed Csum".
QString RefusalWords(std::string_view description, switcher::DecodeStatus status);

// A line that stands for what happened so many times: "… (7 times)"; itself for once.
QString TimesWords(const QString& line, int times);

// The action byte of a command for a crosspoint: "Take", "Sum off".
QString ActionWords(int action);

// Words about crosspoints, with the labels of the channels.
class CrosspointWords {
 public:
  // `labels` must outlive the object.
  explicit CrosspointWords(ChannelLabels& labels) : labels_(labels) {}

  // A crosspoint (both from 1): "CAM 4 < MIC ANCH".
  QString Crosspoint(int output, int input) const;

  // A command for a crosspoint (both from 1) with its action byte: "Take: CAM 4 < MIC ANCH".
  QString Command(int output, int input, int action) const;

  // What a report changed: "CAM 4: + MIC ANCH, − VISION".
  QString Report(const RowChange& change) const;

 private:
  ChannelLabels& labels_;
};

}  // namespace app

#endif  // APP_LOG_EVENT_WORDS_H_
