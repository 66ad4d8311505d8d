// SPDX-License-Identifier: MIT

#include "views/presets/presets_window.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

#include "switcher/presets/preset_text.h"
#include "views/widgets/icon.h"
#include "views/widgets/row_height.h"
#include "views/window_place/on_screen.h"

namespace views {
namespace {

enum PresetColumn { kName, kStored };

constexpr int kPresetsWidth = 94;  // characters
constexpr int kPresetsShown = 10;

}  // namespace

PresetsWindow::PresetsWindow(const model::SystemModel& model, QWidget* parent)
    : QDialog(parent),
      model_(model),
      list_(new QTreeWidget(this)),
      note_(new QLabel(this)),
      name_(new QLineEdit(this)),
      outputs_(new QLineEdit(this)),
      store_(new QPushButton(tr("&Store"), this)),
      recall_(new QPushButton(tr("&Recall…"), this)),
      delete_(new QPushButton(tr("&Delete…"), this)),
      close_(new QPushButton(tr("Close"), this)) {
  setObjectName(QStringLiteral("frmPresets"));
  setWindowTitle(tr("Presets Of The Map"));
  setWindowIcon(Icon(QStringLiteral("presets")));
  LayOut();
  connect(list_, &QTreeWidget::currentItemChanged, this, &PresetsWindow::ShowChosen);
  connect(list_, &QTreeWidget::itemClicked, this, [this] { name_->setText(Chosen()); });
  connect(list_, &QTreeWidget::itemActivated, this, &PresetsWindow::Recall);
  connect(name_, &QLineEdit::returnPressed, this, &PresetsWindow::Store);
  connect(outputs_, &QLineEdit::returnPressed, this, &PresetsWindow::Store);
  connect(store_, &QPushButton::clicked, this, &PresetsWindow::Store);
  connect(recall_, &QPushButton::clicked, this, &PresetsWindow::Recall);
  connect(delete_, &QPushButton::clicked, this, [this] {
    if (!Chosen().isEmpty()) Q_EMIT DeleteRequested(Chosen());
  });
  connect(close_, &QPushButton::clicked, this, &QDialog::reject);
  ShowChosen();
}

void PresetsWindow::LayOut() {
  list_->setObjectName(QStringLiteral("lstPresets"));
  list_->setAccessibleName(tr("Presets"));
  list_->setHeaderLabels({tr("Preset"), tr("Stored")});
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionsMovable(false);
  list_->header()->setSectionResizeMode(kName, QHeaderView::Stretch);
  list_->header()->setSectionResizeMode(kStored, QHeaderView::ResizeToContents);
  note_->setObjectName(QStringLiteral("aidPresetNote"));
  note_->setTextFormat(Qt::PlainText);
  note_->setWordWrap(true);
  // The fields below stay where they are, whatever is said.
  note_->setMinimumHeight(2 * fontMetrics().lineSpacing());
  name_->setObjectName(QStringLiteral("txtPresetName"));
  outputs_->setObjectName(QStringLiteral("aidPresetOutputs"));
  outputs_->setPlaceholderText(tr("all, or for example 1-8, 12"));
  store_->setObjectName(QStringLiteral("cmdStorePreset"));
  store_->setToolTip(tr("Keep what these outputs hear now under this name"));
  recall_->setObjectName(QStringLiteral("cmdRecallPreset"));
  recall_->setToolTip(
      tr("Show what the map differs in from the chosen preset; nothing is sent yet"));
  delete_->setObjectName(QStringLiteral("cmdDeletePreset"));
  close_->setObjectName(QStringLiteral("aidClosePresets"));
  // Enter does what belongs to where it is pressed.
  for (QPushButton* const button : {store_, recall_, delete_, close_}) {
    button->setAutoDefault(false);
  }

  auto* const beside = new QVBoxLayout;
  beside->addWidget(recall_);
  beside->addWidget(delete_);
  beside->addStretch();
  auto* const choice = new QHBoxLayout;
  choice->addWidget(list_, 1);
  choice->addLayout(beside);
  const auto label = [this](const QString& text, QWidget* buddy) {
    auto* const made = new QLabel(text, this);
    made->setBuddy(buddy);
    return made;
  };
  auto* const fields = new QGridLayout;
  fields->addWidget(label(tr("&Name"), name_), 0, 0);
  fields->addWidget(name_, 0, 1);
  fields->addWidget(label(tr("&Outputs"), outputs_), 1, 0);
  fields->addWidget(outputs_, 1, 1);
  fields->addWidget(store_, 0, 2);
  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(close_);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(choice, 1);
  layout->addWidget(note_);
  layout->addLayout(fields);
  layout->addLayout(buttons);
  const QSize wanted(kPresetsWidth * fontMetrics().averageCharWidth(),
                     sizeHint().height() + kPresetsShown * fontMetrics().height() / 2);
  resize(SizeOnScreen(wanted, screen()->availableSize()));
  list_->setFocus();
}

void PresetsWindow::SetPresets(const std::vector<Entry>& presets, const QString& name) {
  const QString chosen = name.isEmpty() ? Chosen() : name;
  if (name == name_->text().trimmed()) name_->setModified(false);  // it is stored
  list_->clear();
  for (const Entry& preset : presets) {
    auto* const item = new QTreeWidgetItem(
        {preset.name, preset.stored.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))});
    // Of the column whose width is not that of its contents.
    item->setSizeHint(kName, QSize(0, RowHeight(fontMetrics())));
    item->setToolTip(kName, preset.name);
    list_->addTopLevelItem(item);
    if (preset.name == chosen) list_->setCurrentItem(item);
  }
  if (list_->currentItem() == nullptr) list_->setCurrentItem(list_->topLevelItem(0));
  ShowChosen();
}

void PresetsWindow::Say(const QString& text) { note_->setText(text); }

QString PresetsWindow::Chosen() const {
  const QTreeWidgetItem* const item = list_->currentItem();
  return item == nullptr ? QString() : item->text(kName);
}

void PresetsWindow::ShowChosen() {
  const bool hasChosen = !Chosen().isEmpty();
  recall_->setEnabled(hasChosen);
  delete_->setEnabled(hasChosen);
  if (hasChosen && !name_->isModified()) name_->setText(Chosen());
  Say(hasChosen ? QString()
                : tr("No presets yet. Store keeps what the outputs of the map hear under a name."));
}

void PresetsWindow::Store() {
  const QString name = name_->text().trimmed();
  if (!switcher::IsPresetName(name.toStdString())) {
    Say(tr("A name has 1 to 80 characters, and none of / \\ : * ? \" < > |"));
    name_->setFocus();
    return;
  }
  std::vector<int> outputs;
  if (!switcher::ReadOutputs(outputs_->text().toStdString(), model_.CrosspointMap.Size(),
                             &outputs)) {
    Say(tr("The outputs are 1 to %1: nothing for all of them, or for example 1-8, 12")
            .arg(model_.CrosspointMap.Size()));
    outputs_->setFocus();
    return;
  }
  Q_EMIT StoreRequested(name, outputs);
}

void PresetsWindow::Recall() {
  if (!Chosen().isEmpty()) Q_EMIT RecallRequested(Chosen());
}

}  // namespace views
