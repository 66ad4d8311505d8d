// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_QUESTION_H_
#define VIEWS_WIDGETS_QUESTION_H_

#include <QString>
#include <functional>
#include <vector>

class QObject;
class QWidget;

namespace views {

// One of the answers to a question.
struct Answer {
  QString name;  // the object name of its button
  QString caption;
  std::function<void()> run;
};

struct Question {
  QString name;  // the object name of its box
  QString text;
  std::vector<Answer> answers;
};

// Opens a box that asks, modal over `window`, with a button for each answer and one for Cancel,
// which Enter and Escape choose and which does nothing.  An answer is run when the box has closed,
// unless `context` is gone by then.
void Ask(QWidget& window, QObject& context, const Question& question);

}  // namespace views

#endif  // VIEWS_WIDGETS_QUESTION_H_
