// SPDX-License-Identifier: MIT

#ifndef APP_TRANSFERS_H_
#define APP_TRANSFERS_H_

#include <QObject>
#include <QPointer>

#include "app/open_views.h"
#include "views/transfer/download_window.h"
#include "views/transfer/retrieval_window.h"

namespace app {

// The two windows that carry the configuration to the switcher and back.  Each is open at most
// once, modal over the main window.
class Transfers : public QObject {
  Q_OBJECT

 public:
  // All that is referred to must outlive the object.  The retrieval's closeViews need not be
  // set.
  Transfers(QWidget& window, OpenViews& views, const views::DownloadServices& download,
            const views::RetrievalServices& retrieval);

  // Closes what is still open.
  ~Transfers() override;

  // Opens frmDownProg, which goes by the model's DownloadMode.  Both operations first store what
  // is typed into a view; where that fails, which is reported, they open nothing.
  void SendData();

  // Opens frmSysInfo.  When it closes the three main views are shown again in their stored
  // places.
  void RetrieveData();

  // Cancels and closes the open window, for a program that ends.
  void CancelNow();

 Q_SIGNALS:
  // A download or a retrieval has begun, or how it ended, in words.
  void Happened(const QString& text);
  // Something to say in passing.
  void NoteRequested(const QString& note);

 private:
  QWidget& window_;
  OpenViews& views_;
  const views::DownloadServices downloadServices_;
  views::RetrievalServices retrievalServices_;
  QPointer<views::DownloadWindow> download_;
  QPointer<views::RetrievalWindow> retrieval_;
};

}  // namespace app

#endif  // APP_TRANSFERS_H_
