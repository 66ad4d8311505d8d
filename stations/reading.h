// SPDX-License-Identifier: MIT

#ifndef STATIONS_READING_H_
#define STATIONS_READING_H_

#include "model/status.h"

namespace stations {

// What was read, and whether it could be: after a failure it is what there is without it.
template <typename T>
struct Reading {
  T value{};
  model::Status status{};
};

}  // namespace stations

#endif  // STATIONS_READING_H_
