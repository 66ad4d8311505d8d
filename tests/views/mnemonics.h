// SPDX-License-Identifier: MIT

#ifndef TESTS_VIEWS_MNEMONICS_H_
#define TESTS_VIEWS_MNEMONICS_H_

#include <gtest/gtest.h>

#include <QAction>
#include <QKeySequence>
#include <QWidget>
#include <set>

namespace test {

// Expects that every item of a menu has a mnemonic, and none that of another.
inline void ExpectMnemonics(const QWidget& menu) {
  std::set<QString> keys;
  for (const QAction* const action : menu.actions()) {
    if (action->isSeparator()) continue;
    const QString key = QKeySequence::mnemonic(action->text()).toString();
    EXPECT_FALSE(key.isEmpty()) << action->text().toStdString();
    EXPECT_TRUE(keys.insert(key).second) << action->text().toStdString();
  }
}

}  // namespace test

#endif  // TESTS_VIEWS_MNEMONICS_H_
