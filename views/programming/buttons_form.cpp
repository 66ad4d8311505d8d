// SPDX-License-Identifier: MIT

#include "views/programming/buttons_form.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <string>
#include <vector>

#include "views/pickable_stations.h"
#include "views/programming/page_metrics.h"

namespace views {
namespace {

// A page that scrolls where the tab is too small for it.
QScrollArea* Scrolled(QWidget* page) {
  auto* const area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidgetResizable(true);
  area->setWidget(page);
  return area;
}

QWidget* PageWith(std::initializer_list<QWidget*> parts) {
  auto* const page = new QWidget;
  auto* const column = new QVBoxLayout(page);
  column->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, 0);
  column->setSpacing(kPageMargin);
  for (QWidget* const part : parts) column->addWidget(part);
  column->addStretch();
  return page;
}

// What is wrong with the database is told by whoever works with it.
std::vector<PickableStation> StationsToFind(const Services& services) {
  std::vector<PickableStation> stations;
  (void)ReadPickableStations(services, &stations);
  return stations;
}

std::vector<std::string> RelayCaptions(int count) {
  std::vector<std::string> captions;
  for (int relay = 1; relay <= count; ++relay) {
    captions.push_back(
        QStringLiteral("Relay %1").arg(relay, 2, 10, QLatin1Char('0')).toStdString());
  }
  return captions;
}

}  // namespace

ButtonsForm::ButtonsForm(ShownStation& station, QWidget* parent)
    : QWidget(parent),
      optos(*new OptoPage(station, this)),
      navigator(*new StationNavigator(station.services.model.ButtonCount, *optos.ChannelSelector(),
                                      this)),
      finder(
          *new StationFinder([&services = station.services] { return StationsToFind(services); })),
      heading(*new StationHeading(this)),
      tabs(*new QTabWidget(this)),
      options(*new OperationOptions(QStringLiteral("fmButType"), QStringLiteral("optButType"))),
      inactive(*new InactiveNote(QStringLiteral("aidInactiveNote"))),
      targets(*new TargetBoxes(QStringLiteral("frStations"), QStringLiteral("ckStationSel"),
                               station.services.model.ChkBoxCount)),
      relays(*new TargetBoxes(QStringLiteral("frRelays"), QStringLiteral("ckRelaySel"),
                              station.services.model.RelayCount)),
      top_(new QHBoxLayout),
      aids_(new QHBoxLayout) {
  AddTabs(station.services.model);
  top_->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, 0);
  top_->setSpacing(kPageMargin);
  top_->addWidget(&navigator);
  top_->addWidget(&heading, 1);
  top_->addStretch();
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(kPageMargin);
  column->addLayout(top_);
  column->addWidget(&tabs, 1);
  column->addLayout(aids_);
  auto* const prompt = new QLabel(tr("&Go to station"), this);
  prompt->setObjectName(QStringLiteral("aidStationPrompt"));
  prompt->setBuddy(&finder);
  aids_->setContentsMargins(kPageMargin, 0, kPageMargin, kPageMargin);
  aids_->addWidget(prompt);
  aids_->addWidget(&finder);
  aids_->addStretch();
  ShowTab(0);
}

void ButtonsForm::AddCommand(QAction& command) {
  auto* const button = new QToolButton(this);
  button->setObjectName(QStringLiteral("btn") + command.objectName().mid(3));
  button->setToolButtonStyle(Qt::ToolButtonTextOnly);
  button->setDefaultAction(&command);
  button->setFocusPolicy(Qt::TabFocus);
  aids_->addWidget(button);
}

void ButtonsForm::AddTabs(const model::SystemModel& model) {
  tabs.setObjectName(QStringLiteral("SSActiveTabs1"));
  tabs.setDocumentMode(true);
  tabs.setUsesScrollButtons(true);
  tabs.setElideMode(Qt::ElideNone);
  // With keys the tabs themselves are gone through.
  for (QToolButton* const scroll : tabs.tabBar()->findChildren<QToolButton*>()) {
    scroll->setFocusPolicy(Qt::NoFocus);
  }
  for (int index = 0; index < kButtonPages; ++index) {
    const int first = index * ButtonPage::kButtons + 1;
    auto* const page = new ButtonPage(first, model.ButtonCount);
    connect(page, &ButtonPage::Clicked, this, &ButtonsForm::ButtonPressed);
    tabs.addTab(Scrolled(page),
                QStringLiteral("Buttons %1 - %2").arg(first).arg(first + ButtonPage::kButtons - 1));
    pages_[static_cast<std::size_t>(index)] = page;
  }
  options.AddNote(inactive);
  tabs.addTab(Scrolled(PageWith({&options, &targets})), QStringLiteral("Edit Selected Button"));
  relays.setTitle(tr("Relays Assigned To The Station"));
  relays.SetCaptions(RelayCaptions(model.RelayCount));
  tabs.addTab(Scrolled(PageWith({&relays})), QStringLiteral("Relay Assignments"));
  tabs.addTab(Scrolled(&optos), QStringLiteral("Opto Assignments"));
}

ButtonPage& ButtonsForm::PageOf(int button) const {
  return *pages_[static_cast<std::size_t>((button - 1) / ButtonPage::kButtons)];
}

int ButtonsForm::FirstInSight() const {
  const int tab = tabs.currentIndex();
  return tab < kButtonPages ? tab * ButtonPage::kButtons + 1 : 0;
}

int ButtonsForm::FocusedButton() const {
  const int first = FirstInSight();
  return first == 0 ? 0 : PageOf(first).FocusedButton();
}

void ButtonsForm::ShowTab(int tab) {
  using Selector = StationNavigator::Selector;
  const bool isOpto = tab == kOptoTab;
  if (isOpto) {
    navigator.Show(Selector::OptoChannel,
                   QStringLiteral("Navigation Controls [ Select Opto To Configure ]"));
  } else if (tab == kEditTab) {
    navigator.Show(
        Selector::Button,
        QStringLiteral("Navigation Controls [ Select Station And Button To Configure ]"));
  } else {
    navigator.Show(Selector::None,
                   QStringLiteral("Navigation Controls [ Select Station To Configure ]"));
  }
  heading.ShowFor(isOpto ? QStringLiteral("Opto") : QStringLiteral("Port"), !isOpto);
}

void ButtonsForm::PlaceFields(int room) {
  const int needed = navigator.width() + heading.minimumSizeHint().width() + 3 * kPageMargin;
  top_->setDirection(room < needed ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

}  // namespace views
