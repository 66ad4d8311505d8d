// SPDX-License-Identifier: MIT

#include "tools/pilot/pilot_commands.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QColor>
#include <QJsonArray>
#include <QJsonValue>
#include <QMessageBox>
#include <QMetaMethod>
#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QSessionManager>
#include <QSize>
#include <QTest>
#include <QWidget>
#include <array>
#include <functional>
#include <map>
#include <optional>

#include "tools/pilot/screen_places.h"

namespace pilot {

namespace {

QJsonObject Error(const QString& text) {
  return {{QStringLiteral("ok"), false}, {QStringLiteral("error"), text}};
}

QJsonObject Answer(const QJsonValue& value = {}) {
  return {{QStringLiteral("ok"), true}, {QStringLiteral("value"), value}};
}

QString TextOf(const QJsonObject& request, const char* key) {
  return request.value(QLatin1String(key)).toString();
}

QJsonValue ToJson(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QPoint: {
      const QPoint point = value.toPoint();
      return QJsonArray{point.x(), point.y()};
    }
    case QMetaType::QSize: {
      const QSize size = value.toSize();
      return QJsonArray{size.width(), size.height()};
    }
    case QMetaType::QRect: {
      const QRect rect = value.toRect();
      return QJsonArray{rect.x(), rect.y(), rect.width(), rect.height()};
    }
    case QMetaType::QColor:
      return value.value<QColor>().name();
    default:
      break;
  }
  return QJsonValue::fromVariant(value);
}

// The object of that name: in the named window, else in any window, beginning with the topmost.
QObject* Find(const QJsonObject& request) {
  const QString name = TextOf(request, "object");
  const QString windowName = TextOf(request, "window");
  QList<QObject*> roots;
  if (QWidget* const modal = QApplication::activeModalWidget()) roots.append(modal);
  for (QWidget* const window : QApplication::topLevelWidgets()) roots.append(window);
  if (!windowName.isEmpty()) {
    QList<QObject*> windows;
    for (QObject* const root : roots) {
      if (root->objectName() == windowName) windows.append(root);
      windows += root->findChildren<QObject*>(windowName);
    }
    roots = windows;
  }
  for (QObject* const root : roots) {
    if (root->objectName() == name) return root;
    // A command may stand in several windows: the window's own one comes first.
    if (auto* const own = root->findChild<QObject*>(name, Qt::FindDirectChildrenOnly)) return own;
    if (auto* const child = root->findChild<QObject*>(name)) return child;
  }
  return nullptr;
}

QJsonObject FindCommand(QObject* object, const QJsonObject& /*request*/) {
  const auto* const widget = qobject_cast<QWidget*>(object);
  return Answer(QJsonObject{
      {QStringLiteral("visible"), widget == nullptr || widget->isVisible()},
      {QStringLiteral("enabled"),
       widget != nullptr ? widget->isEnabled() : object->property("enabled").toBool()},
  });
}

QJsonObject Get(QObject* object, const QJsonObject& request) {
  const QByteArray name = TextOf(request, "property").toUtf8();
  const QVariant value = object->property(name.constData());
  if (!value.isValid()) return Error(QStringLiteral("no property ") + QString::fromUtf8(name));
  return Answer(ToJson(value));
}

QJsonObject Set(QObject* object, const QJsonObject& request) {
  const QByteArray name = TextOf(request, "property").toUtf8();
  QVariant value = request.value(QLatin1String("value")).toVariant();
  if (object->property(name.constData()).typeId() == QMetaType::QSize) {
    const QVariantList sides = value.toList();
    value = QSize(sides.value(0).toInt(), sides.value(1).toInt());
  }
  if (!object->setProperty(name.constData(), value)) {
    return Error(QStringLiteral("cannot set ") + QString::fromUtf8(name));
  }
  return Answer();
}

QJsonObject Invoke(QObject* object, const QJsonObject& request) {
  const QByteArray name = TextOf(request, "method").toUtf8();
  const QJsonArray args = request.value(QLatin1String("args")).toArray();
  const QMetaObject* const meta = object->metaObject();
  for (int i = 0; i < meta->methodCount(); ++i) {
    const QMetaMethod method = meta->method(i);
    if (method.name() != name || method.parameterCount() != args.size() || args.size() > 3) {
      continue;
    }
    std::array<QVariant, 3> values;
    const QList<QByteArray> types = method.parameterTypes();
    std::array<QGenericArgument, 3> generic;
    for (int k = 0; k < args.size(); ++k) {
      const auto at = static_cast<std::size_t>(k);
      values[at] = args[k].toVariant();
      if (!values[at].convert(method.parameterMetaType(k))) {
        return Error(QStringLiteral("argument %1 does not fit").arg(k));
      }
      generic[at] = QGenericArgument(types[k].constData(), values[at].constData());
    }
    QVariant result;
    bool called = false;
    if (method.returnType() == QMetaType::Void) {
      called = method.invoke(object, Qt::DirectConnection, generic[0], generic[1], generic[2]);
    } else {
      result = QVariant(method.returnMetaType());
      called = method.invoke(object, Qt::DirectConnection,
                             QGenericReturnArgument(method.typeName(), result.data()), generic[0],
                             generic[1], generic[2]);
    }
    return called ? Answer(ToJson(result)) : Error(QStringLiteral("the call failed"));
  }
  return Error(QStringLiteral("no invokable method ") + QString::fromUtf8(name));
}

QJsonObject Trigger(QObject* object, const QJsonObject& /*request*/) {
  auto* const action = qobject_cast<QAction*>(object);
  if (action == nullptr) return Error(QStringLiteral("not an action"));
  if (!action->isEnabled()) return Error(QStringLiteral("the action is disabled"));
  // From the event loop, so that the answer does not wait for what the action opens.
  QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection);
  return Answer();
}

QJsonObject Click(QObject* object, const QJsonObject& request) {
  auto* const widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr || !widget->isVisible()) return Error(QStringLiteral("not visible"));
  QPoint at = widget->rect().center();
  if (request.contains(QLatin1String("x"))) {
    at = QPoint(request.value(QLatin1String("x")).toInt(),
                request.value(QLatin1String("y")).toInt());
  }
  QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, at);
  return Answer();
}

QJsonObject Close(QObject* object, const QJsonObject& /*request*/) {
  auto* const widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return Error(QStringLiteral("not a window"));
  QMetaObject::invokeMethod(widget, &QWidget::close, Qt::QueuedConnection);
  return Answer();
}

// Without a window manager a window that closes leaves none active, and nobody has the focus.
QJsonObject Focus(QObject* object, const QJsonObject& /*request*/) {
  auto* const widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return Error(QStringLiteral("not a widget"));
  widget->activateWindow();
  widget->setFocus();
  return Answer();
}

QJsonObject SavePicture(QWidget& widget, const QJsonObject& request) {
  const QString file = TextOf(request, "file");
  if (!widget.grab().save(file)) return Error(QStringLiteral("cannot write ") + file);
  return Answer();
}

QJsonObject Grab(QObject* object, const QJsonObject& request) {
  auto* const widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return Error(QStringLiteral("not a widget"));
  return SavePicture(*widget, request);
}

QJsonObject Rows(QObject* object, const QJsonObject& /*request*/) {
  const auto* const view = qobject_cast<QAbstractItemView*>(object);
  if (view == nullptr) return Error(QStringLiteral("not a list"));
  const QAbstractItemModel& model = *view->model();
  QJsonArray rows;
  for (int row = 0; row < model.rowCount(); ++row) {
    QJsonArray cells;
    for (int column = 0; column < model.columnCount(); ++column) {
      cells.append(model.index(row, column).data().toString());
    }
    rows.append(cells);
  }
  return Answer(rows);
}

QJsonObject Names(QObject* object, const QJsonObject& /*request*/) {
  QJsonArray names;
  for (const auto* const widget : object->findChildren<QWidget*>()) {
    if (widget->isVisible() && !widget->objectName().isEmpty()) names.append(widget->objectName());
  }
  return Answer(names);
}

QJsonObject Keys(const QJsonObject& request) {
  QWidget* target = QApplication::focusWidget();
  if (request.contains(QLatin1String("object"))) target = qobject_cast<QWidget*>(Find(request));
  if (target == nullptr) return Error(QStringLiteral("nobody to type to"));
  if (request.contains(QLatin1String("sequence"))) {
    QTest::keySequence(target, QKeySequence(TextOf(request, "sequence")));
  } else {
    QTest::keyClicks(target, TextOf(request, "text"));
  }
  return Answer();
}

QJsonObject Where(QObject* object, const QJsonObject& request) {
  const std::optional<QRect> place = PlaceOnScreen(*object, request);
  return place ? Answer(ToJson(*place)) : Error(QStringLiteral("not in sight"));
}

QJsonObject Frame(QObject* object, const QJsonObject& /*request*/) {
  const auto* const widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr || !widget->isWindow()) return Error(QStringLiteral("not a window"));
  return Answer(ToJson(FrameOnScreen(*widget)));
}

// The message boxes that show.
QList<QMessageBox*> ShownBoxes() {
  QList<QMessageBox*> shown;
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    auto* const box = qobject_cast<QMessageBox*>(window);
    if (box != nullptr && box->isVisible()) shown.append(box);
  }
  return shown;
}

QJsonObject Boxes() {
  QJsonArray boxes;
  for (const QMessageBox* const box : ShownBoxes()) {
    boxes.append(QJsonObject{
        {QStringLiteral("title"), box->windowTitle()},
        {QStringLiteral("text"), box->text()},
        {QStringLiteral("more"), box->informativeText()},
        {QStringLiteral("icon"), box->icon() == QMessageBox::Critical
                                     ? QStringLiteral("critical")
                                     : QStringLiteral("exclamation")},
    });
  }
  return Answer(boxes);
}

QJsonObject CloseBox() {
  const QList<QMessageBox*> boxes = ShownBoxes();
  if (boxes.isEmpty()) return Error(QStringLiteral("no message box shows"));
  QTest::keyClick(boxes.front(), Qt::Key_Return);
  return Answer();
}

QJsonObject GrabBox(const QJsonObject& request) {
  const QList<QMessageBox*> boxes = ShownBoxes();
  if (boxes.isEmpty()) return Error(QStringLiteral("no message box shows"));
  return SavePicture(*boxes.front(), request);
}

// What the toolkit does when the desktop's session manager asks programs to save their data.
QJsonObject LogOut() {
  auto* const session = qApp->findChild<QSessionManager*>();
  if (session == nullptr) return Error(QStringLiteral("no session manager"));
  // From the event loop, so that the answer does not wait for what the program does.
  QMetaObject::invokeMethod(
      qApp, [session] { Q_EMIT qApp->commitDataRequest(*session); }, Qt::QueuedConnection);
  return Answer();
}

using ObjectCommand = QJsonObject (*)(QObject*, const QJsonObject&);

const std::map<QString, ObjectCommand>& ObjectCommands() {
  static const std::map<QString, ObjectCommand> commands{
      {QStringLiteral("find"), FindCommand}, {QStringLiteral("get"), Get},
      {QStringLiteral("set"), Set},          {QStringLiteral("invoke"), Invoke},
      {QStringLiteral("trigger"), Trigger},  {QStringLiteral("click"), Click},
      {QStringLiteral("close"), Close},      {QStringLiteral("grab"), Grab},
      {QStringLiteral("names"), Names},      {QStringLiteral("rows"), Rows},
      {QStringLiteral("focus"), Focus},      {QStringLiteral("where"), Where},
      {QStringLiteral("frame"), Frame},
  };
  return commands;
}

}  // namespace

QJsonObject Done() { return Answer(); }

QJsonObject Execute(const QJsonObject& request) {
  const QString command = TextOf(request, "do");
  if (command == QLatin1String("keys")) return Keys(request);
  if (command == QLatin1String("keyboard")) return Answer(KeyboardFocus());
  if (command == QLatin1String("boxes")) return Boxes();
  if (command == QLatin1String("closeBox")) return CloseBox();
  if (command == QLatin1String("logOut")) return LogOut();
  if (command == QLatin1String("grabBox")) return GrabBox(request);
  const auto entry = ObjectCommands().find(command);
  if (entry == ObjectCommands().end()) return Error(QStringLiteral("unknown: ") + command);
  QObject* const object = Find(request);
  if (object == nullptr) {
    return Error(QStringLiteral("no object ") + TextOf(request, "object"));
  }
  return entry->second(object, request);
}

}  // namespace pilot
