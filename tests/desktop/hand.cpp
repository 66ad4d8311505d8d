// SPDX-License-Identifier: MIT

#include "tests/desktop/hand.h"

#include <QJsonArray>
#include <QThread>
#include <utility>

namespace desktop {
namespace {

using std::chrono::seconds;
using test::ConsoleProcess;

constexpr seconds kPatience{10};
// Between two movements of a hand that is quick.
constexpr int kPause = 120;  // milliseconds
constexpr int kMostNotches = 100;
constexpr int kBesideArrow = 8;  // pixels

QString Text(int number) { return QString::number(number); }

QJsonObject Request(const char* what, const Target& target) {
  QJsonObject request{{QStringLiteral("do"), QLatin1String(what)},
                      {QStringLiteral("object"), QLatin1String(target.object)},
                      {QStringLiteral("window"), QLatin1String(target.window)}};
  if (target.row >= 0) {
    request.insert(QStringLiteral("row"), target.row);
    request.insert(QStringLiteral("column"), target.column);
    request.insert(QStringLiteral("check"), target.check);
  }
  if (target.tab >= 0) request.insert(QStringLiteral("tab"), target.tab);
  if (target.accept) request.insert(QStringLiteral("accept"), true);
  return request;
}

std::string NameOf(const Target& target) {
  std::string name = target.object;
  if (target.row >= 0) name += ", row " + std::to_string(target.row);
  if (target.tab >= 0) name += ", tab " + std::to_string(target.tab);
  return name;
}

}  // namespace

Hand::Hand(const Desktop& desktop, ConsoleProcess& console)
    : desktop_(desktop), console_(console) {}

void Hand::Fail(const std::string& why) {
  if (failure_.empty()) failure_ = why;
}

void Hand::Do(const QStringList& arguments) {
  if (failure_.empty()) LetGo(arguments);
}

void Hand::LetGo(const QStringList& arguments) {
  if (!desktop_.Do(arguments)) Fail("xdotool " + arguments.join(u' ').toStdString());
  QThread::msleep(kPause);
}

std::optional<QPoint> Hand::Look(const Target& target) {
  const QJsonObject answer = console_.Ask(Request("where", target));
  if (!answer.value(QLatin1String("ok")).toBool()) return std::nullopt;
  const QJsonArray place = answer.value(QLatin1String("value")).toArray();
  const int x = place[0].toInt();
  const int width = place[2].toInt();
  return QPoint(target.end ? x + width - kBesideArrow : x + width / 2,
                place[1].toInt() + place[3].toInt() / 2);
}

// Where it stands when it stands still: a window that opens is still being placed.
std::optional<QPoint> Hand::Find(const Target& target) {
  if (!failure_.empty()) return std::nullopt;
  std::optional<QPoint> last;
  const bool isFound = ConsoleProcess::WaitFor(
      [&] {
        const std::optional<QPoint> before = std::exchange(last, Look(target));
        if (last && last == before) return true;
        QThread::msleep(kPause);
        return false;
      },
      kPatience);
  if (!isFound) Fail("cannot be reached: " + NameOf(target));
  return isFound ? last : std::nullopt;
}

void Hand::Move(const QPoint& to) { Do({QStringLiteral("mousemove"), Text(to.x()), Text(to.y())}); }

void Hand::Press(const Target& target, const char* button) {
  ++steps_;
  const auto at = Find(target);
  if (!at) return;
  Move(*at);
  Do({QStringLiteral("click"), QLatin1String(button)});
}

void Hand::Click(const Target& target) { Press(target, "1"); }

void Hand::RightClick(const Target& target) { Press(target, "3"); }

void Hand::ShiftClick(const Target& target) {
  Do({QStringLiteral("keydown"), QStringLiteral("shift")});
  Click(target);
  LetGo({QStringLiteral("keyup"), QStringLiteral("shift")});
}

void Hand::ClickTwice(const QPoint& at) {
  Move(at);
  Do({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
      QStringLiteral("--delay"), QStringLiteral("60"), QStringLiteral("1")});
}

void Hand::DoubleClick(const Target& target) {
  ++steps_;
  if (const auto at = Find(target)) ClickTwice(*at);
}

void Hand::DoubleClickTitle(const char* window) {
  constexpr int kInTitle = 8;  // pixels
  ++steps_;
  const QRect frame = Frame(window);
  ClickTwice({frame.center().x(), frame.top() + kInTitle});
}

void Hand::Drag(const Target& from, const Target& to) {
  ++steps_;
  const auto begin = Find(from);
  const auto end = Find(to);
  if (!begin || !end) return;
  constexpr int kMoves = 8;
  Move(*begin);
  Do({QStringLiteral("mousedown"), QStringLiteral("1")});
  for (int move = 1; move <= kMoves; ++move) Move(*begin + (*end - *begin) * move / kMoves);
  LetGo({QStringLiteral("mouseup"), QStringLiteral("1")});
}

void Hand::Turn(const Target& over, const Target& wanted) {
  ++steps_;
  const auto at = Find(over);
  if (!at) return;
  Move(*at);
  for (int notch = 0; notch < kMostNotches && !Look(wanted); ++notch) {
    Do({QStringLiteral("click"), QStringLiteral("5")});
    ++notches_;
  }
}

void Hand::Key(const char* keys) {
  ++steps_;
  Do({QStringLiteral("key"), QLatin1String(keys)});
}

void Hand::Type(std::string_view word) {
  ++steps_;
  Do({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("30"),
      QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size()))});
}

// As it is when it stands still: a window that opens is still being placed.
QRect Hand::Frame(const char* window) {
  QRect frame;
  ConsoleProcess::WaitFor(
      [&] {
        const QJsonArray rect = console_
                                    .Ask({{QStringLiteral("do"), QStringLiteral("frame")},
                                          {QStringLiteral("object"), QLatin1String(window)}})
                                    .value(QLatin1String("value"))
                                    .toArray();
        const QRect now(rect[0].toInt(), rect[1].toInt(), rect[2].toInt(), rect[3].toInt());
        const QRect before = std::exchange(frame, now);
        if (!now.isEmpty() && now == before) return true;
        QThread::msleep(kPause);
        return false;
      },
      kPatience);
  return frame;
}

std::string Hand::Focused(const char* what) {
  return console_.Ask({{QStringLiteral("do"), QStringLiteral("keyboard")}})
      .value(QLatin1String("value"))
      .toObject()
      .value(QLatin1String(what))
      .toString()
      .toStdString();
}

void Hand::Until(const std::string& what, const std::function<bool()>& holds) {
  if (!failure_.empty()) return;
  if (!ConsoleProcess::WaitFor(holds, kPatience)) Fail("never: " + what);
}

void Hand::See(const char* window) {
  if (!failure_.empty()) return;
  if (ConsoleProcess::WaitFor([&] { return Focused("window") == window; }, kPatience)) return;
  Fail(std::string("the keyboard is not with ") + window + ", but with " + Focused("window"));
}

void Hand::SeeFocus(const char* widget) {
  if (!failure_.empty()) return;
  if (ConsoleProcess::WaitFor([&] { return Focused("widget") == widget; }, kPatience)) return;
  Fail(std::string("the keyboard is not with ") + widget + ", but with " + Focused("widget"));
}

void Hand::SeeReady(const char* button) {
  Until(std::string(button) + " can be pressed", [&] {
    return console_
        .Ask({{QStringLiteral("do"), QStringLiteral("find")},
              {QStringLiteral("object"), QLatin1String(button)}})
        .value(QLatin1String("value"))
        .toObject()
        .value(QLatin1String("enabled"))
        .toBool();
  });
}

}  // namespace desktop
