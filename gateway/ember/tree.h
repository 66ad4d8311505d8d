// SPDX-License-Identifier: MIT
//
// The tree that the open gateway shows of the system.  Targets and sources count from 0 in it.
//
//   1.1.n          product, version
//   1.2            the crosspoints, a matrix
//   1.3.1.t .2.s   labels of outputs and inputs
//   1.4.1.t.1      whether a row is of priority
//   1.4.2.s.1      the gain of an input in dB
//   1.4.3.t.s.1    whether a crosspoint is inhibited: answered, never listed
//   1.5.k          tally
//   1.6.1 .2       link, whole map known
//   1.7.1 .2       call, priority listen: functions

#ifndef GATEWAY_EMBER_TREE_H_
#define GATEWAY_EMBER_TREE_H_

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "gateway/ember/glow.h"
#include "model/system_model.h"
#include "stations/channel_texts.h"
#include "switcher/known_map.h"

namespace ember {

// A gain in dB is its step less this.
inline constexpr int kUnityGainStep = 100;
inline constexpr int kLeastDecibels = -100;
inline constexpr int kMostDecibels = 27;

// Paths by what stands there; numbers from 0.
Path MatrixPath();
Path TargetLabelPath(int target);
Path SourceLabelPath(int source);
Path PriorityPath(int target);
Path GainPath(int source);
Path InhibitedRowPath(int target);
Path InhibitedPath(int target, int source);
Path TallyPath(int unit);
Path LinkPath();
Path MapCompletePath();
Path CallPath();
Path PriorityListenPath();

// The target and the source whose inhibit stands at a path, or right below it; nothing for another.
std::optional<std::pair<int, int>> CrosspointOfInhibited(const Path& path);

// The source whose gain a path is; nothing for any other path.
std::optional<int> SourceOfGain(const Path& path);

class Tree {
 public:
  // What is referred to must outlive the object.
  struct Services {
    const model::SystemModel& model;
    const switcher::KnownMap& knownMap;
    stations::ChannelTexts& texts;
    std::string version;    // of the program
    bool mayWrite = false;  // gains may be set
  };
  explicit Tree(Services services) : services_(std::move(services)) {}

  // What stands at a path; nothing where there is nothing.
  std::optional<ElementKind> KindAt(const Path& path) const;

  // The message that answers who asks for the directory of an element; empty for a path that is
  // unknown.
  Bytes Directory(const Path& path);

  // The value of the parameter at a path.  REQUIRES: KindAt(path) == ElementKind::Parameter
  GlowValue ValueAt(const Path& path);

  // The sources of a target.  REQUIRES: 0 <= target < ChannelCount
  Connection Row(int target, Disposition disposition) const;

 private:
  int Channels() const { return services_.model.ChannelCount; }
  int Gains() const;
  std::vector<Path> Children(const Path& path) const;
  Bytes Describe(const Path& path);
  static NodeContents NodeAt(const Path& path);
  ParameterContents ParameterAt(const Path& path);
  MatrixContents Matrix() const;
  Bytes MatrixWithConnections() const;

  const Services services_;
};

}  // namespace ember

#endif  // GATEWAY_EMBER_TREE_H_
