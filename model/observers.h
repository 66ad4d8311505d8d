// SPDX-License-Identifier: MIT

#ifndef MODEL_OBSERVERS_H_
#define MODEL_OBSERVERS_H_

#include <functional>
#include <initializer_list>
#include <vector>

namespace model {

// Who is told of events, one after the other in the order in which they were added.
template <typename Events>
class Observers {
 public:
  // All must outlive the object.
  Observers() = default;
  Observers(std::initializer_list<std::reference_wrapper<Events>> observers)
      : observers_(observers) {}
  void Add(Events& observer) { observers_.push_back(observer); }
  void Remove(const Events& observer) {
    std::erase_if(observers_, [&](const Events& added) { return &added == &observer; });
  }

  // Calls one operation of all of them: Tell(&SwitcherEvents::InhibitsChanged, output).
  template <typename... Parameters, typename... Values>
  void Tell(void (Events::*event)(Parameters...), const Values&... values) const {
    for (Events& observer : observers_) (observer.*event)(values...);
  }

 private:
  std::vector<std::reference_wrapper<Events>> observers_;
};

}  // namespace model

#endif  // MODEL_OBSERVERS_H_
