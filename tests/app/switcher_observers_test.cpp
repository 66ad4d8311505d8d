// SPDX-License-Identifier: MIT

#include "app/switcher_observers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace app {
namespace {

// Writes its name into a list that all share.
class Recorder : public switcher::SwitcherEvents {
 public:
  Recorder(std::string name, std::vector<std::string>& told)
      : name_(std::move(name)), told_(told) {}
  void CrosspointRowChanged(int output, int mode) override {
    told_.push_back(name_ + " " + std::to_string(output) + " " + std::to_string(mode));
  }

 private:
  const std::string name_;
  std::vector<std::string>& told_;
};

TEST(SwitcherObservers, TheLogIsToldFirstAndThePanelsLast) {
  std::vector<std::string> told;
  Recorder panels("panels", told);
  Recorder views("views", told);
  Recorder aids("aids", told);
  Recorder log("log", told);
  const auto observers = InOrder({.log = log, .aids = aids, .views = views, .panels = panels});
  observers.Tell(&switcher::SwitcherEvents::CrosspointRowChanged, 5, 1);
  EXPECT_THAT(told, testing::ElementsAre("log 5 1", "aids 5 1", "views 5 1", "panels 5 1"));
}

}  // namespace
}  // namespace app
