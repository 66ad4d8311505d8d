// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_HELP_WINDOW_H_
#define APP_SHELL_HELP_WINDOW_H_

#include <QPalette>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

class QLabel;
class QLineEdit;
class QTextBrowser;

namespace app {

// The manual's pages, in their order; the first one is the contents.
QStringList ManualPages();

// The style of the manual's pages in a theme, as a style sheet of their documents.
QString ManualStyle(const QPalette& palette);

// The place of the manual that a dialog or message box is explained at, as a link between its
// pages; empty when it has none, or for no dialog.
QString ManualPlace(const QWidget* dialog);

// The manual that ships with the program, in a window of its own: the way back and forth between
// its pages, and a field that finds a text in all of them.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(QWidget* parent = nullptr);

  // Goes to a place, as ManualPlace names it.
  void ShowPlace(const QString& place);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  QWidget* MakeTools();
  void AddKeys();
  void ShowStyled();
  // Goes to the next place with the text of the field, or to the last one before this with
  // `back`: on this page, then on the others.
  void Find(bool back);

  QTextBrowser* pages_;
  QLineEdit* text_;
  QLabel* said_;
};

// The manual, however it is shown: by the platform's help viewer, or in a window of the program.
class Manual {
 public:
  Manual() = default;
  ~Manual();
  Manual(const Manual&) = delete;
  Manual& operator=(const Manual&) = delete;

  // Starts the help viewer.  Where it cannot be started, shows the window, at the place that
  // explains the dialog or box in front.
  void Show();

 private:
  QPointer<HelpWindow> window_;
};

}  // namespace app

#endif  // APP_SHELL_HELP_WINDOW_H_
