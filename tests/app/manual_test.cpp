// SPDX-License-Identifier: MIT
//
// The manual as a whole: its links and pictures, and that every command has a place in it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <algorithm>
#include <memory>

#include "app/console.h"
#include "app/shell/help_window.h"
#include "tests/app/manual_text.h"
#include "tests/support/temporary_folder.h"
#include "tests/views/gui_support.h"
#include "views/main_view.h"

namespace {

using test::Says;
using testing::SizeIs;

// More than this a picture must not take, nor all of them together, in bytes.
constexpr qint64 kLargestPicture = 100'000;
constexpr qint64 kAllPictures = 600'000;

QDir Folder() { return QDir(QStringLiteral(TESK_SOURCE "/app/help")); }

QString Source(const QString& page) {
  QFile file(QStringLiteral(":/help/") + page);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << page.toStdString();
  return QString::fromUtf8(file.readAll());
}

// What the attribute has in a page, wherever it stands.
QStringList Values(const QString& page, const char* attribute) {
  const QRegularExpression pattern(
      QStringLiteral("\\b%1=\"([^\"]*)\"").arg(QLatin1String(attribute)));
  QStringList values;
  for (auto each = pattern.globalMatch(Source(page)); each.hasNext();) {
    values.append(each.next().captured(1));
  }
  return values;
}

class ManualTest : public testing::Test {
 protected:
  // Loads the pages.
  app::HelpWindow window_;
  QTextBrowser* pages_ = window_.findChild<QTextBrowser*>(QStringLiteral("aidHelpPages"));
};

TEST_F(ManualTest, EveryFileOfTheFolderIsInTheProgram) {
  QStringList pages = app::ManualPages();
  std::ranges::sort(pages);
  EXPECT_EQ(Folder().entryList(QDir::Files, QDir::Name), pages);
  for (const QString& picture :
       QDir(Folder().filePath(QStringLiteral("pictures"))).entryList(QDir::Files)) {
    EXPECT_TRUE(QFile::exists(QStringLiteral(":/help/pictures/") + picture))
        << picture.toStdString();
  }
}

TEST_F(ManualTest, EveryLinkLeadsSomewhereInTheManual) {
  int links = 0;
  for (const QString& page : app::ManualPages()) {
    for (const QString& link : Values(page, "href")) {
      ++links;
      const QString file = link.section(u'#', 0, 0);
      const QString place = link.section(u'#', 1);
      const QString target = file.isEmpty() ? page : file;
      ASSERT_TRUE(app::ManualPages().contains(target))
          << link.toStdString() << " in " << page.toStdString();
      if (place.isEmpty()) continue;
      EXPECT_TRUE(Values(target, "name").contains(place))
          << link.toStdString() << " in " << page.toStdString();
    }
  }
  EXPECT_GT(links, 100);
}

// From the contents by links, and back by the line at the top.
TEST_F(ManualTest, EveryPageIsReachedAndLeadsBack) {
  const QString contents = app::ManualPages().front();
  const QStringList links = Values(contents, "href");
  for (const QString& page : app::ManualPages()) {
    if (page == contents) continue;
    EXPECT_TRUE(links.contains(page)) << page.toStdString();
    EXPECT_EQ(Values(page, "href").front(), contents) << page.toStdString();
  }
}

// A place that nothing leads to is missing in the contents; places for links from other pages are
// no places of their own.
TEST_F(ManualTest, EveryTaskIsInTheContents) {
  const QStringList links = Values(app::ManualPages().front(), "href");
  for (const char* const page : {"map.html", "labels.html", "programming.html", "levels.html",
                                 "transfer.html", "backups.html", "export.html"}) {
    const QString name = QLatin1String(page);
    const auto tasks = std::ranges::count_if(
        links, [&](const QString& link) { return link.startsWith(name + u'#'); });
    EXPECT_GE(tasks, 2) << page;
  }
}

TEST_F(ManualTest, EveryPictureIsThereAndShown) {
  QStringList shown;
  for (const QString& page : app::ManualPages()) {
    const QStringList pictures = Values(page, "src");
    const QStringList words = Values(page, "alt");
    EXPECT_EQ(pictures.size(), words.size()) << page.toStdString();
    EXPECT_FALSE(words.contains(QString())) << page.toStdString();
    for (const QString& picture : pictures) {
      shown.append(picture.section(u'/', 1));
      const QImage image(QStringLiteral(":/help/") + picture);
      ASSERT_FALSE(image.isNull()) << picture.toStdString();
      // As wide as a page of the window when it opens.
      EXPECT_LE(image.width(), 764) << picture.toStdString();
    }
  }
  shown.removeDuplicates();
  std::ranges::sort(shown);
  const QDir folder(Folder().filePath(QStringLiteral("pictures")));
  EXPECT_EQ(folder.entryList(QDir::Files, QDir::Name), shown);
  qint64 all = 0;
  for (const QFileInfo& file : folder.entryInfoList(QDir::Files)) {
    all += file.size();
    EXPECT_LE(file.size(), kLargestPicture) << file.fileName().toStdString();
  }
  EXPECT_LE(all, kAllPictures);
}

// Nothing in the window is wider than it is when it opens: no page scrolls sideways.
TEST_F(ManualTest, EveryPageFitsTheWindow) {
  window_.show();
  for (const QString& page : app::ManualPages()) {
    pages_->setSource(QUrl(QStringLiteral("qrc:/help/") + page));
    EXPECT_LE(pages_->document()->size().width(), pages_->viewport()->width())
        << page.toStdString();
  }
}

// --- The commands

// The actions of a menu and of the menus in it, without what stands for the open windows.
QList<QAction*> CommandsOf(const QWidget& menu) {
  QList<QAction*> commands;
  for (QAction* const action : menu.actions()) {
    if (action->isSeparator()) continue;
    commands.append(action);
    if (action->menu() != nullptr) commands.append(CommandsOf(*action->menu()));
  }
  return commands;
}

class CommandsOfTheManualTest : public ManualTest {
 protected:
  CommandsOfTheManualTest() {
    // No device: nothing may be sent anywhere.
    test::WriteFile(folder_ / "Orvotesk.ini",
                    "[CONFIGURATION]\r\nCOM Port=1\r\n[SERIAL DEVICES]\r\nCOM1=" +
                        (folder_ / "no device").string() + "\r\n");
    const QString folder = QString::fromStdString(folder_.Path().string());
    console_ = std::make_unique<app::Console>(
        app::AppFolder{.path = folder, .program = folder, .lacks = {}});
    console_->Start();
    for (QWidget* const window : QApplication::topLevelWidgets()) {
      if (window->objectName() == QStringLiteral("frmMain")) main_ = window;
    }
  }

  test::TemporaryFolder folder_;
  std::unique_ptr<app::Console> console_;
  QWidget* main_ = nullptr;
  const QString page_ = test::PageText(QStringLiteral("commands.html"));
};

TEST_F(CommandsOfTheManualTest, HasEveryCommandOfTheMenusAndItsKeys) {
  ASSERT_NE(main_, nullptr);
  const QList<QAction*> commands = CommandsOf(*main_->findChild<QMenuBar*>());
  EXPECT_THAT(commands, SizeIs(testing::Ge(30)));
  for (const QAction* const command : commands) {
    EXPECT_TRUE(Says(page_, command->text())) << command->text().toStdString();
    const QString keys = command->shortcut().toString(QKeySequence::PortableText);
    if (!keys.isEmpty()) {
      EXPECT_TRUE(page_.contains(keys)) << command->text().toStdString();
    }
  }
}

TEST_F(CommandsOfTheManualTest, HasEveryToolOfTheWindows) {
  ASSERT_NE(main_, nullptr);
  const QList<views::MainView*> views = main_->findChildren<views::MainView*>();
  ASSERT_THAT(views, SizeIs(3));
  QStringList tools;
  for (const views::MainView* const view : views) {
    for (const QAction* const tool : view->findChildren<QAction*>()) {
      if (!tool->objectName().startsWith(QStringLiteral("ID_"))) continue;
      tools.append(tool->objectName());
      EXPECT_TRUE(Says(page_, tool->text())) << tool->text().toStdString();
    }
  }
  EXPECT_THAT(tools, SizeIs(15));
  EXPECT_TRUE(tools.contains(QStringLiteral("ID_Listen")));
}

// What F1 shows in a dialog of that command; the dialog is closed again.
TEST_F(CommandsOfTheManualTest, IsToBeHadInTheDialogs) {
  ASSERT_NE(main_, nullptr);
  struct Case {
    const char* command;
    const char* page;
    const char* place;
  };
  // The box of the line that is not there comes first.
  for (const Case& each :
       {Case{nullptr, "messages.html", "comm"},
        Case{"ID_ViewSourcelevelControl", "levels.html", "set"},
        Case{"ID_ViewQDVStatus", "levels.html", "tally"},
        Case{"ID_SendData", "transfer.html", "send"},
        Case{"ID_RetreiveData", "transfer.html", "retrieve"},
        Case{"aidRestoreBackup", "backups.html", "restore"},
        Case{"aidKeySheets", "export.html", "keys"}, Case{"aidPresets", "presets.html", "store"},
        Case{"ID_About", "commands.html", "help"}}) {
    if (each.command != nullptr) {
      test::Find<QAction>(*main_, each.command).trigger();
    }
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }));
    QWidget* const dialog = QApplication::activeModalWidget();
    dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
    QTest::keyClick(dialog, Qt::Key_F1);
    const QTextBrowser* shown = nullptr;
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
      if (window == &window_ || window->objectName() != QStringLiteral("frmHelp")) continue;
      shown = window->findChild<QTextBrowser*>(QStringLiteral("aidHelpPages"));
    }
    ASSERT_NE(shown, nullptr) << each.page;
    EXPECT_EQ(shown->source().fileName(), QLatin1String(each.page));
    EXPECT_EQ(shown->source().fragment(), QLatin1String(each.place));
    EXPECT_TRUE(Values(QLatin1String(each.page), "name").contains(QLatin1String(each.place)));
    dialog->close();
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() == nullptr; }));
  }
}

// Every title that a box can have leads to its part of the messages.
TEST_F(ManualTest, EveryBoxLeadsToItsMessages) {
  for (const char* const title :
       {"Comm Error", "Database Error", "Error Processing", "Serial Communications Error",
        "Control Error", "Synchronization Warning"}) {
    QWidget box;
    box.setWindowTitle(QLatin1String(title));
    const QString place = app::ManualPlace(&box);
    EXPECT_EQ(place.section(u'#', 0, 0), QStringLiteral("messages.html")) << title;
    const QString heading = QStringLiteral("<a name=\"%1\"></a>%2</h2>")
                                .arg(place.section(u'#', 1), QLatin1String(title));
    EXPECT_TRUE(Source(QStringLiteral("messages.html")).contains(heading)) << title;
  }
  EXPECT_EQ(app::ManualPlace(nullptr), QString());
  const QWidget other;
  EXPECT_EQ(app::ManualPlace(&other), QString());
}

TEST_F(CommandsOfTheManualTest, ACommandThatIsNotThereIsMissed) {
  EXPECT_FALSE(Says(page_, QStringLiteral("&Brew Coffee…")));
}

}  // namespace
