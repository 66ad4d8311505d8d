// SPDX-License-Identifier: MIT

#include "gateway/ember/tree.h"

#include <algorithm>

namespace ember {

namespace {

// The numbers below the top node.
enum Branch : int {
  kIdentity = 1,
  kMatrixBranch = 2,
  kLabels = 3,
  kParameters = 4,
  kTally = 5,
  kLinkBranch = 6,
  kFunctions = 7,
};

constexpr int kTop = 1;

// Below labels and parameters.
constexpr int kTargets = 1;
constexpr int kSources = 2;
constexpr int kCrosspoints = 3;

constexpr int kProduct = 1;
constexpr int kLinkNumber = 1;
constexpr int kMapCompleteNumber = 2;
constexpr int kCallNumber = 1;
constexpr int kPriorityListenNumber = 2;

constexpr char kProgram[] = "teskctl";
constexpr char kProductName[] = "Orvo Intercom Control";

bool IsWithin(int number, int count) { return number >= 0 && number < count; }

Path Below(const Path& path, int number) {
  Path child = path;
  child.push_back(number);
  return child;
}

std::string Numbered(const char* name, int number) { return name + std::to_string(number); }

FunctionContents FunctionAt(const Path& path) {
  using Type = TupleItem::Type;
  return {
      .identifier = path.back() == kCallNumber ? "call" : "priorityListen",
      .arguments = {{Type::Integer, "target"}, {Type::Integer, "source"}, {Type::Boolean, "on"}},
      .result = {{Type::Boolean, "done"}}};
}

}  // namespace

Path MatrixPath() { return {kTop, kMatrixBranch}; }
Path TargetLabelPath(int target) { return {kTop, kLabels, kTargets, target}; }
Path SourceLabelPath(int source) { return {kTop, kLabels, kSources, source}; }
Path PriorityPath(int target) { return {kTop, kParameters, kTargets, target, 1}; }
Path GainPath(int source) { return {kTop, kParameters, kSources, source, 1}; }
Path InhibitedRowPath(int target) { return {kTop, kParameters, kCrosspoints, target}; }
Path InhibitedPath(int target, int source) {
  return {kTop, kParameters, kCrosspoints, target, source, 1};
}
Path TallyPath(int unit) { return {kTop, kTally, unit}; }
Path LinkPath() { return {kTop, kLinkBranch, kLinkNumber}; }
Path MapCompletePath() { return {kTop, kLinkBranch, kMapCompleteNumber}; }
Path CallPath() { return {kTop, kFunctions, kCallNumber}; }
Path PriorityListenPath() { return {kTop, kFunctions, kPriorityListenNumber}; }

std::optional<std::pair<int, int>> CrosspointOfInhibited(const Path& path) {
  if (path.size() != 5 && path.size() != 6) return std::nullopt;
  const Path whole = InhibitedPath(path[3], path[4]);
  if (!std::equal(path.begin(), path.end(), whole.begin())) return std::nullopt;
  return std::pair(path[3], path[4]);
}

std::optional<int> SourceOfGain(const Path& path) {
  if (path.size() != 5 || path != GainPath(path[3])) return std::nullopt;
  return path[3];
}

int Tree::Gains() const { return std::min(Channels(), model::kLevelCount); }

std::optional<ElementKind> Tree::KindAt(const Path& path) const {
  const auto when = [](bool isThere, ElementKind kind) {
    return isThere ? std::optional(kind) : std::nullopt;
  };
  const std::size_t size = path.size();
  if (size == 0) return ElementKind::Root;
  if (path[0] != kTop) return std::nullopt;
  if (size == 1) return ElementKind::Node;
  // Without channels there is nothing to list below these.
  const int branch = path[1];
  const bool isOfChannels = branch == kMatrixBranch || branch == kLabels || branch == kParameters;
  if (isOfChannels && Channels() == 0) return std::nullopt;
  if (branch == kMatrixBranch) return when(size == 2, ElementKind::Matrix);
  if (size == 2) return when(branch >= kIdentity && branch <= kFunctions, ElementKind::Node);
  const int number = path[2];
  switch (branch) {
    case kIdentity:
    case kLinkBranch:
      return when(size == 3 && (number == 1 || number == 2), ElementKind::Parameter);
    case kTally:
      return when(size == 3 && IsWithin(number, model::kLevelCount), ElementKind::Parameter);
    case kFunctions:
      return when(size == 3 && (number == 1 || number == 2), ElementKind::Function);
    case kLabels:
      if (number != kTargets && number != kSources) return std::nullopt;
      if (size == 3) return ElementKind::Node;
      return when(size == 4 && IsWithin(path[3], Channels()), ElementKind::Parameter);
    case kParameters:
      break;
    default:
      return std::nullopt;
  }
  if (number < kTargets || number > kCrosspoints) return std::nullopt;
  if (size == 3) return ElementKind::Node;
  if (!IsWithin(path[3], number == kSources ? Gains() : Channels())) return std::nullopt;
  if (size == 4) return ElementKind::Node;
  if (number != kCrosspoints) return when(size == 5 && path[4] == 1, ElementKind::Parameter);
  if (!IsWithin(path[4], Channels())) return std::nullopt;
  if (size == 5) return ElementKind::Node;
  return when(size == 6 && path[5] == 1, ElementKind::Parameter);
}

// A node that has nothing to list is listed nowhere: there are consumers that would ask for it for
// ever.
std::vector<Path> Tree::Children(const Path& path) const {
  std::vector<Path> children;
  const auto add = [&](int first, int count) {
    for (int i = 0; i < count; ++i) {
      Path child = Below(path, first + i);
      if (KindAt(child)) children.push_back(std::move(child));
    }
  };
  if (path.size() == 1) {
    add(kIdentity, kFunctions);
    return children;
  }
  const int branch = path[1];
  if (path.size() == 2) {
    if (branch == kTally) {
      add(0, model::kLevelCount);
    } else {
      add(1, 2);
    }
    return children;
  }
  const bool isCrosspoint = branch == kParameters && path[2] == kCrosspoints;
  if (path.size() == 3 && !isCrosspoint) add(0, Channels());
  if (path.size() == (isCrosspoint ? 5U : 4U)) add(1, 1);
  return children;
}

Bytes Tree::Directory(const Path& path) {
  const std::optional<ElementKind> kind = KindAt(path);
  if (!kind) return {};
  std::vector<Bytes> elements;
  switch (*kind) {
    case ElementKind::Root:
      elements.push_back(TopNode(kTop, {.identifier = kProgram, .description = kProductName}));
      break;
    case ElementKind::Matrix:
      elements.push_back(MatrixWithConnections());
      break;
    case ElementKind::Parameter:
    case ElementKind::Function:
      elements.push_back(Describe(path));
      break;
    case ElementKind::Node:
      for (const Path& child : Children(path)) elements.push_back(Describe(child));
      if (elements.empty()) elements.push_back(EmptyNode(path));
      break;
  }
  return GlowMessage(elements);
}

Bytes Tree::Describe(const Path& path) {
  switch (KindAt(path).value_or(ElementKind::Node)) {
    case ElementKind::Parameter:
      return QualifiedParameter(path, ParameterAt(path));
    case ElementKind::Function:
      return QualifiedFunction(path, FunctionAt(path));
    case ElementKind::Matrix:
      return QualifiedMatrix(path, Matrix());
    case ElementKind::Root:
    case ElementKind::Node:
      break;
  }
  return QualifiedNode(path, NodeAt(path));
}

NodeContents Tree::NodeAt(const Path& path) {
  const int number = path.back();
  if (path.size() == 4) return {.identifier = Numbered(path[2] == kTargets ? "t" : "s", number)};
  if (path.size() == 3) {
    if (number == kTargets) return {"targets", "Targets (outputs), from 0"};
    return {"sources", "Sources (inputs), from 0"};
  }
  switch (number) {
    case kIdentity:
      return {"identity", "Identity"};
    case kLabels:
      return {"labels", "Labels"};
    case kParameters:
      return {"parameters", "Parameters of targets and sources"};
    case kTally:
      return {"tally", "Tally, from 0"};
    case kLinkBranch:
      return {"link", "Link to the switcher"};
    default:
      return {"functions", "Calls: target and source count from 0"};
  }
}

ParameterContents Tree::ParameterAt(const Path& path) {
  const int number = path.back();
  ParameterContents contents{.value = ValueAt(path)};
  switch (path[1]) {
    case kIdentity:
      contents.identifier = number == kProduct ? "product" : "version";
      break;
    case kLabels:
      contents.identifier = Numbered(path[2] == kTargets ? "t" : "s", number);
      break;
    case kTally:
      contents.identifier = Numbered("unit", number);
      break;
    case kLinkBranch:
      contents.identifier = number == kLinkNumber ? "link" : "mapComplete";
      break;
    default:
      if (path[2] == kTargets) contents.identifier = "priority";
      if (path[2] == kCrosspoints) contents.identifier = "inhibited";
      if (path[2] != kSources) break;
      contents.identifier = "gain";
      contents.minimum = kLeastDecibels;
      contents.maximum = kMostDecibels;
      contents.access = services_.mayWrite ? Access::ReadWrite : Access::Read;
      break;
  }
  return contents;
}

GlowValue Tree::ValueAt(const Path& path) {
  const model::SystemModel& model = services_.model;
  const int number = path.back();
  switch (path[1]) {
    case kIdentity:
      return number == kProduct ? std::string(kProductName) : services_.version;
    case kLabels:
      return path[2] == kTargets ? services_.texts.Label(number + 1)
                                 : services_.texts.InLabel(number + 1);
    case kTally:
      return model.QdvTally[static_cast<std::size_t>(number)] != 0;
    case kLinkBranch:
      return number == kLinkNumber ? model.LinkStatus[0] == 1
                                   : model.XmapComplete && services_.knownMap.IsKnown();
    default:
      break;
  }
  if (path[2] == kTargets) return model.ChannelStatus[path[3] + 1] != 0;
  if (path[2] == kCrosspoints) {
    return services_.texts.IsInhibited(path[3] + 1, path[4] + 1).value_or(false);
  }
  return std::int64_t{model.InputGains[static_cast<std::size_t>(path[3])]} - kUnityGainStep;
}

Connection Tree::Row(int target, Disposition disposition) const {
  Connection connection{.target = target, .disposition = disposition};
  const auto row = services_.model.CrosspointMap.Row(target + 1);
  for (std::size_t source = 0; source < row.size(); ++source) {
    if (row[source] != 0) connection.sources.push_back(static_cast<int>(source));
  }
  return connection;
}

MatrixContents Tree::Matrix() const {
  return {.identifier = "crosspoints",
          .description = "Crosspoints",
          .targetCount = Channels(),
          .sourceCount = Channels(),
          .parameters = {kTop, kParameters},
          .labels = {kTop, kLabels},
          .labelsDescription = "Primary"};
}

Bytes Tree::MatrixWithConnections() const {
  std::vector<Connection> connections;
  for (int target = 0; target < Channels(); ++target) {
    connections.push_back(Row(target, Disposition::Tally));
  }
  return QualifiedMatrix(MatrixPath(), Matrix(), connections);
}

}  // namespace ember
