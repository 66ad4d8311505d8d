// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_SAVE_DIALOG_H_
#define VIEWS_WIDGETS_SAVE_DIALOG_H_

#include <QString>
#include <functional>

class QObject;
class QWidget;

namespace views {

// What to ask for when something is to be saved.
struct SaveQuestion {
  QString name;  // the object name of the dialog
  QString title;
  QString filters;   // "CSV files (*.csv);;All files (*)"
  QString fileName;  // as it is proposed, with its suffix
};

// Opens the dialog that asks, modal over `window`.  `save` is run with the path that the user
// chooses, unless `context` is gone by then.
void AskWhereToSave(QWidget& window, QObject& context, const SaveQuestion& question,
                    const std::function<void(const QString& path)>& save);

}  // namespace views

#endif  // VIEWS_WIDGETS_SAVE_DIALOG_H_
