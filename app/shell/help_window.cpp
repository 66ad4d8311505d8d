// SPDX-License-Identifier: MIT

#include "app/shell/help_window.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <functional>

#include "views/widgets/contrast.h"
#include "views/widgets/icon.h"
#include "views/widgets/shown.h"
#include "views/window_place/kept_place.h"
#include "views/window_place/on_screen.h"

// The pages stand in a library, whose resources have to be asked for.  The macro declares the
// function that it calls where it stands, hence outside any namespace.
static void LoadPages() { Q_INIT_RESOURCE(help); }

namespace app {
namespace {

// A page with its largest picture, without a scroll bar at the bottom.
constexpr QSize kHelpSize(820, 720);
constexpr int kMargin = 20;
constexpr int kToolMargin = 4;
constexpr int kFieldCharacters = 28;

constexpr char kFolder[] = "qrc:/help/";

// Many themes leave links a blue that hurts on a light ground and is lost on a dark one.
constexpr QColor kLinkOnLight(0x00, 0x60, 0xA0);
constexpr QColor kLinkOnDark(0x6D, 0xB9, 0xF2);

// Shares of the text's colour in what is said beside the text, in the lines of tables and behind
// their headings.
constexpr double kQuietShare = 0.7;
constexpr double kLineShare = 0.3;
constexpr double kHeadingShare = 0.08;

// Where the dialogs, by their names, and the message boxes, by their titles, are explained.
struct Explained {
  const char* what;
  const char* place;
};
constexpr Explained kExplained[] = {
    {"frmInptLevel", "levels.html#set"},
    {"frmQdvTally", "levels.html#tally"},
    {"frmDownProg", "transfer.html#send"},
    {"frmSendChanges", "unsent.html#send"},
    {"frmSysInfo", "transfer.html#retrieve"},
    {"frmCompare", "compare.html#compare"},
    {"frmTeskAbout", "commands.html#help"},
    {"aidExportDialog", "export.html#export"},
    {"aidSaveCopyDialog", "backups.html#save"},
    {"frmBackup", "backups.html#restore"},
    {"frmKeySheets", "export.html#keys"},
    {"aidSheetsDialog", "export.html#keys"},
    {"aidOtherFileDialog", "backups.html#restore"},
    {"frmSettings", "set-up.html#dialog"},
    {"aidExportChanges", "recent.html#go"},
    {"frmPresets", "presets.html#store"},
    {"frmRecall", "presets.html#recall"},
    {"aidAskReplacePreset", "presets.html#store"},
    {"aidAskDeletePreset", "presets.html#store"},
    {"aidAskRecallUnkept", "presets.html#cannot"},
    {"aidUnlockQuestion", "locks.html#console"},
    {"aidAskReceived", "crash.html#ask"},
    {"aidAskEdited", "crash.html#ask"},
    {"aidAskDiscard", "crash.html#restore"},
    {"Comm Error", "messages.html#comm"},
    {"Database Error", "messages.html#database"},
    {"Error Processing", "messages.html#processing"},
    {"Serial Communications Error", "messages.html#serial"},
    {"Control Error", "messages.html#control"},
    {"Synchronization Warning", "messages.html#sync"},
};

}  // namespace

QStringList ManualPages() {
  return {QStringLiteral("index.html"),    QStringLiteral("map.html"),
          QStringLiteral("presets.html"),  QStringLiteral("locks.html"),
          QStringLiteral("labels.html"),   QStringLiteral("programming.html"),
          QStringLiteral("levels.html"),   QStringLiteral("transfer.html"),
          QStringLiteral("unsent.html"),   QStringLiteral("compare.html"),
          QStringLiteral("undo.html"),     QStringLiteral("recent.html"),
          QStringLiteral("crash.html"),    QStringLiteral("backups.html"),
          QStringLiteral("export.html"),   QStringLiteral("link.html"),
          QStringLiteral("set-up.html"),   QStringLiteral("controllers.html"),
          QStringLiteral("commands.html"), QStringLiteral("messages.html"),
          QStringLiteral("errors.html")};
}

QString ManualPlace(const QWidget* dialog) {
  if (dialog == nullptr) return {};
  for (const Explained& each : kExplained) {
    const QLatin1String what(each.what);
    if (dialog->objectName() == what || dialog->windowTitle() == what) {
      return QLatin1String(each.place);
    }
  }
  return {};
}

QString ManualStyle(const QPalette& palette) {
  const QColor ink = palette.color(QPalette::Text);
  const QColor ground = palette.color(QPalette::Base);
  const QColor link = views::IsDark(ground) ? kLinkOnDark : kLinkOnLight;
  return QStringLiteral(
             "h1 { font-size: x-large; margin-top: 6px; margin-bottom: 8px }"
             "h2 { font-size: large; margin-top: 22px; margin-bottom: 6px }"
             "h3 { margin-top: 16px; margin-bottom: 4px }"
             "p { margin-top: 6px; margin-bottom: 6px }"
             "li { margin-top: 3px; margin-bottom: 3px }"
             "a { color: %4; text-decoration: none }"
             "p.where, p.next { color: %1 }"
             "p.picture { margin-top: 10px; margin-bottom: 2px }"
             "p.caption { color: %1; margin-top: 0px; margin-bottom: 12px }"
             "table.list { border-collapse: collapse; border-width: 1px; border-style: solid;"
             " border-color: %2; margin-top: 6px; margin-bottom: 10px }"
             "table.list th { background-color: %3; padding: 4px 8px; text-align: left }"
             "table.list td { padding: 4px 8px }")
      .arg(views::Blend(ink, ground, kQuietShare).name(),
           views::Blend(ink, ground, kLineShare).name(),
           views::Blend(ink, ground, kHeadingShare).name(), link.name());
}

HelpWindow::HelpWindow(QWidget* parent)
    : QWidget(parent, Qt::Window),
      pages_(new QTextBrowser(this)),
      text_(new QLineEdit(this)),
      said_(new QLabel(this)) {
  LoadPages();
  setObjectName(QStringLiteral("frmHelp"));
  setWindowTitle(tr("Orvo Intercom Control Help"));
  setWindowIcon(views::Icon(QStringLiteral("contents")));
  setAttribute(Qt::WA_DeleteOnClose);
  // A page keeps its width for its pictures, and scrolls where it is too high for the screen.
  resize(kHelpSize.width(), views::SizeOnScreen(kHelpSize, screen()->availableSize()).height());

  pages_->setObjectName(QStringLiteral("aidHelpPages"));
  pages_->setFrameShape(QFrame::NoFrame);
  pages_->document()->setDocumentMargin(kMargin);
  pages_->document()->setDefaultStyleSheet(ManualStyle(palette()));
  ShowPlace(ManualPages().front());

  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(MakeTools());
  layout->addWidget(pages_, 1);
  AddKeys();
  pages_->setFocus();
  new views::KeptPlace(*this, QStringLiteral("Help"));
}

void HelpWindow::ShowPlace(const QString& place) {
  pages_->setSource(QUrl(QLatin1String(kFolder) + place));
}

QWidget* HelpWindow::MakeTools() {
  auto* const tools = new QWidget(this);
  auto* const row = new QHBoxLayout(tools);
  row->setContentsMargins(kToolMargin, kToolMargin, kToolMargin, kToolMargin);
  const auto add = [&](const char* name, const char* icon, const QString& caption) {
    auto* const tool = new QToolButton(tools);
    tool->setObjectName(QLatin1String(name));
    tool->setAutoRaise(true);
    tool->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    tool->setIcon(views::Icon(QLatin1String(icon)));
    tool->setText(caption);
    row->addWidget(tool);
    return tool;
  };
  QToolButton* const contents = add("aidHelpContents", "contents", tr("Contents"));
  connect(contents, &QToolButton::clicked, pages_, &QTextBrowser::home);
  QToolButton* const back = add("aidHelpBack", "prev", tr("Back"));
  back->setToolTip(tr("Back to the page before (Alt+Left)"));
  QToolButton* const forward = add("aidHelpForward", "next", tr("Forward"));
  forward->setToolTip(tr("Forward again (Alt+Right)"));
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(back, &QToolButton::clicked, pages_, &QTextBrowser::backward);
  connect(forward, &QToolButton::clicked, pages_, &QTextBrowser::forward);
  connect(pages_, &QTextBrowser::backwardAvailable, back, &QToolButton::setEnabled);
  connect(pages_, &QTextBrowser::forwardAvailable, forward, &QToolButton::setEnabled);
  row->addStretch();

  said_->setObjectName(QStringLiteral("aidHelpSaid"));
  text_->setObjectName(QStringLiteral("aidHelpFind"));
  text_->setPlaceholderText(tr("Find in the manual"));
  text_->setAccessibleName(text_->placeholderText());
  text_->setClearButtonEnabled(true);
  text_->setMinimumWidth(kFieldCharacters * fontMetrics().averageCharWidth());
  row->addWidget(said_);
  row->addWidget(text_);
  connect(text_, &QLineEdit::returnPressed, this, [this] { Find(false); });
  connect(text_, &QLineEdit::textChanged, said_, &QLabel::clear);
  return tools;
}

void HelpWindow::AddKeys() {
  const auto add = [this](const QKeySequence& keys, const std::function<void()>& run) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, run);
  };
  add(Qt::Key_Escape, [this] { close(); });
  add(QKeySequence::Find, [this] {
    text_->setFocus(Qt::ShortcutFocusReason);
    text_->selectAll();
  });
  add(Qt::Key_F3, [this] { Find(false); });
  add(Qt::SHIFT | Qt::Key_F3, [this] { Find(true); });
  add(Qt::CTRL | Qt::Key_Plus, [this] { pages_->zoomIn(); });
  add(Qt::CTRL | Qt::Key_Minus, [this] { pages_->zoomOut(); });
}

void HelpWindow::Find(bool back) {
  const QString text = text_->text().trimmed();
  if (text.isEmpty()) return;
  const QTextDocument::FindFlags flags =
      back ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  said_->clear();
  if (pages_->find(text, flags)) return;
  const QStringList pages = ManualPages();
  const auto count = static_cast<int>(pages.size());
  const auto here = static_cast<int>(pages.indexOf(pages_->source().fileName()));
  for (int step = 1; step <= count; ++step) {
    const QUrl page(QLatin1String(kFolder) + pages[(here + (back ? count - step : step)) % count]);
    // Looked for beside the window: the pages without the text are not gone to.
    QTextDocument document;
    document.setHtml(pages_->loadResource(QTextDocument::HtmlResource, page).toString());
    if (document.find(text).isNull()) continue;
    if (step < count) pages_->setSource(page);
    pages_->moveCursor(back ? QTextCursor::End : QTextCursor::Start);
    pages_->find(text, flags);
    return;
  }
  said_->setText(tr("Not found"));
}

// The colours of the pages are those of the theme.
void HelpWindow::ShowStyled() {
  const int place = pages_->verticalScrollBar()->value();
  pages_->document()->setDefaultStyleSheet(ManualStyle(palette()));
  pages_->reload();
  pages_->verticalScrollBar()->setValue(place);
}

void HelpWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShowStyled();
}

Manual::~Manual() {
  // Closed, so that it keeps its place.
  if (window_ != nullptr) window_->close();
  delete window_;
}

void Manual::Show() {
  if (QProcess::startDetached(QStringLiteral("WINHLP32.EXE"), {QStringLiteral("Teskctl.hlp")})) {
    return;
  }
  if (window_ == nullptr) window_ = new HelpWindow;
  const QString place = ManualPlace(QApplication::activeModalWidget());
  if (!place.isEmpty()) window_->ShowPlace(place);
  views::BringUp(*window_);
}

}  // namespace app
