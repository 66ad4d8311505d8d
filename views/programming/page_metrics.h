// SPDX-License-Identifier: MIT
//
// Sizes that the pages of the programming view share, in logical pixels.

#ifndef VIEWS_PROGRAMMING_PAGE_METRICS_H_
#define VIEWS_PROGRAMMING_PAGE_METRICS_H_

namespace views {

// The distance of a page's contents from its edges, and of its parts from each other.
inline constexpr int kPageMargin = 4;

// Above and below what stands in a frame of a page: at the first size of the view there is no room
// for more.
inline constexpr int kFrameMargin = 1;

// Keys and target boxes in a row: the channels of one unit of the switcher.
inline constexpr int kPageColumns = 8;

// The least height of a box or an option, as a target for the pointer.
inline constexpr int kSmallestTarget = 20;

}  // namespace views

#endif  // VIEWS_PROGRAMMING_PAGE_METRICS_H_
