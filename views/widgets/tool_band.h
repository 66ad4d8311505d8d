// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_TOOL_BAND_H_
#define VIEWS_WIDGETS_TOOL_BAND_H_

#include <QKeySequence>
#include <QToolBar>
#include <functional>

namespace views {

// A tool of a view.  All texts are fixed and end with a NUL.
struct Tool {
  const char* key;      // "ID_Take": the name of its action
  const char* caption;  // with its mnemonic, if it has one
  const char* tip;
  const char* icon;  // the name of its drawing
  bool startsGroup = false;
};

// The band of tools at the top of a view.
class ToolBand : public QToolBar {
  Q_OBJECT

 public:
  // `view` becomes the parent of the band and of all actions.
  ToolBand(const QString& name, const QString& accessibleName, QWidget& view);

  // Adds a tool at the end of the band; `shortcut` works besides its mnemonic.  The button of
  // the tool "ID_Take" is named "btnTake".
  QAction* Add(const Tool& tool, const std::function<void()>& run,
               const QKeySequence& shortcut = QKeySequence());

  // An action of the view, as Add makes it, that stands on no band.
  static QAction* MakeAction(const Tool& tool, const std::function<void()>& run, QWidget& view);

  // Shows text beside the icons, or text alone where that does not fit into the band's width.
  void Fit();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QWidget& view_;
};

}  // namespace views

#endif  // VIEWS_WIDGETS_TOOL_BAND_H_
