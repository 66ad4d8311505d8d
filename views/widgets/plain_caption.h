// SPDX-License-Identifier: MIT
//
// Labels of stations as captions of buttons and boxes, for which "&" begins a mnemonic.

#ifndef VIEWS_WIDGETS_PLAIN_CAPTION_H_
#define VIEWS_WIDGETS_PLAIN_CAPTION_H_

#include <QString>

namespace views {

// The caption that shows `text` as it is.
inline QString PlainCaption(QString text) { return text.replace(u'&', QLatin1String("&&")); }

// What such a caption shows.
inline QString SpokenCaption(QString caption) {
  return caption.replace(QLatin1String("&&"), QLatin1String("&"));
}

}  // namespace views

#endif  // VIEWS_WIDGETS_PLAIN_CAPTION_H_
