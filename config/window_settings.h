// SPDX-License-Identifier: MIT

#ifndef CONFIG_WINDOW_SETTINGS_H_
#define CONFIG_WINDOW_SETTINGS_H_

#include <QObject>
#include <QSettings>
#include <QString>
#include <memory>

#include "config/ini_file.h"
#include "model/status.h"

namespace config {

// The section of the user's settings store that the console's settings file names for the places
// of its windows (section "WINDOW PLACES", key "Section"); empty when it names none.
QString PlacesSection(const IniFile& file);

// Names that section in the settings file.
// REQUIRES: no line break in it
void SetPlacesSection(const QString& section, IniFile& file);

// Where the windows of a console stood last, in the user's own settings store, under the program's
// title.  They are in section "Settings"; a further console of the same user has a section of its
// own when its settings file names one.
//
// Keys are a prefix ("Main", "Butns", "Alphas", "Xmap") and "Left", "Top",
// "Width" or "Height"; values are decimal texts in twips (15 to a pixel).
class WindowSettings : public QObject {
  Q_OBJECT

 public:
  // Those of the section; of "Settings" when it is empty.
  explicit WindowSettings(const QString& section);

  // The text that was stored last, else the default of the key ("1000" for "MainLeft").  A key
  // that is not one of the sixteen has the default "0".
  QString Text(const QString& key) const;

  // The number that the text begins with; a text that begins with none is 0.  Within +-1000000,
  // far beyond any screen.
  int Twips(const QString& key) const;

  // The store has it when the event loop has had its turn, or with Write().
  void SetText(const QString& key, const QString& text);

  // Brings what was stored to the disk.
  void Write();

  // Why the store cannot be used: something other than a file of at most 1 MiB has its name.  Then
  // every key has its default and nothing is stored.
  const model::Status& Problem() const { return problem_; }

 Q_SIGNALS:
  // What was stored could not be written, and why.  The next Write() tries again; when that fails,
  // too, this is not emitted again.
  void Failed(const QString& why);
  // What Failed() told of is written now.
  void Written();

 private:
  QString KeyInStore(const QString& key) const { return section_ + u'/' + key; }

  std::unique_ptr<QSettings> store_;
  const model::Status problem_;
  const QString section_;
  bool isDue_ = false;      // it is about to be written
  bool hasFailed_ = false;  // the last time
};

}  // namespace config

#endif  // CONFIG_WINDOW_SETTINGS_H_
