// SPDX-License-Identifier: MIT

#ifndef CONFIG_WINDOW_SETTINGS_H_
#define CONFIG_WINDOW_SETTINGS_H_

#include <QSettings>
#include <QString>

namespace config {

// Where the windows of a console stood last: section "Settings" of the user's own settings
// store, under the program's title.  A user may have several consoles, each in a folder of its
// own: the first one has that store, with what it held before, and the others have stores of
// their own, under the title and a number that stands for the folder.  Each names its folder.
//
// Keys are a prefix ("Main", "Butns", "Alphas", "Xmap") and "Left", "Top",
// "Width" or "Height"; values are decimal texts in twips (15 to a pixel).
class WindowSettings {
 public:
  // Those of no console in particular.
  WindowSettings();

  // Those of the console in this folder.
  explicit WindowSettings(const QString& folder);

  // The stored text; the default of a key that is not stored ("1000" for "MainLeft").  A key
  // that is not one of the sixteen has the default "0".
  QString Text(const QString& key) const;

  // The number that the text begins with; a text that begins with none is 0.  Within +-1000000,
  // far beyond any screen.
  int Twips(const QString& key) const;

  void SetText(const QString& key, const QString& text);

 private:
  QSettings store_;
};

}  // namespace config

#endif  // CONFIG_WINDOW_SETTINGS_H_
