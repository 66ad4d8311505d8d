// SPDX-License-Identifier: MIT

#ifndef CONFIG_WINDOW_SETTINGS_H_
#define CONFIG_WINDOW_SETTINGS_H_

#include <QSettings>
#include <QString>
#include <optional>

#include "model/status.h"

namespace config {

// Where the windows of a console stood last, in the user's own settings store, under the program's
// title.  Section "Settings" has what was stored last by any of the user's consoles.  The console
// of a folder keeps its own places beside it, in a section of the folder: consoles in several
// folders leave one another's windows alone, and a console of a new, moved or unknown folder
// starts with what was stored last.
//
// Keys are a prefix ("Main", "Butns", "Alphas", "Xmap") and "Left", "Top",
// "Width" or "Height"; values are decimal texts in twips (15 to a pixel).
class WindowSettings {
 public:
  // Those of the console in this folder; with an empty one section "Settings" only.
  explicit WindowSettings(const QString& folder);

  // The text that this console stored last, or any console when this one stored none; else the
  // default of the key ("1000" for "MainLeft").  A key that is not one of the sixteen has the
  // default "0".
  QString Text(const QString& key) const;

  // The number that the text begins with; a text that begins with none is 0.  Within +-1000000,
  // far beyond any screen.
  int Twips(const QString& key) const;

  // Stores the text for this console and as what was stored last.
  void SetText(const QString& key, const QString& text);

  // Why the store cannot be used: something other than a file of at most 1 MiB has its name.  Then
  // every key has its default and nothing is stored.
  const model::Status& Problem() const { return problem_; }

 private:
  std::optional<QSettings> store_;
  const model::Status problem_;
  const QString folder_;
  const QString own_;  // the section of the folder; empty without one
};

}  // namespace config

#endif  // CONFIG_WINDOW_SETTINGS_H_
