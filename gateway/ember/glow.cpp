// SPDX-License-Identifier: MIT

#include "gateway/ember/glow.h"

#include <limits>

namespace ember {

namespace {

enum GlowTag : std::uint8_t {
  kRoot = Application(0),
  kParameter = Application(1),
  kCommand = Application(2),
  kNode = Application(3),
  kElementCollection = Application(4),
  kQualifiedParameter = Application(9),
  kQualifiedNode = Application(10),
  kRootElementCollection = Application(11),
  kMatrix = Application(13),
  kConnection = Application(16),
  kQualifiedMatrix = Application(17),
  kLabel = Application(18),
  kFunction = Application(19),
  kQualifiedFunction = Application(20),
  kTupleItem = Application(21),
  kInvocation = Application(22),
  kInvocationResult = Application(23),
};

enum CommandNumber : std::uint8_t {
  kSubscribe = 30,
  kUnsubscribe = 31,
  kGetDirectory = 32,
  kInvoke = 33,
};

// The types of a parameter.
constexpr int kIntegerParameter = 1;
constexpr int kStringParameter = 3;
constexpr int kBooleanParameter = 4;

// No path of ours has more numbers.  A long one would be kept with each request of its element.
constexpr std::size_t kLongestPath = 8;

constexpr int kManyToMany = 2;
constexpr int kLinear = 0;

// Reading.

std::optional<int> ReadInt(const Tlv* tlv) {
  const std::optional<std::int64_t> number = ReadInteger(tlv);
  if (!number || *number < std::numeric_limits<int>::min() ||
      *number > std::numeric_limits<int>::max()) {
    return std::nullopt;
  }
  return static_cast<int>(*number);
}

GlowValue ReadGlowValue(const Tlv* tlv) {
  if (const auto number = ReadInteger(tlv)) return *number;
  if (const auto flag = ReadBoolean(tlv)) return *flag;
  if (auto text = ReadUtf8(tlv)) return std::move(*text);
  if (const auto real = ReadReal(tlv)) return *real;
  return {};
}

// What is wrapped in the [0] of each member of a sequence.
template <typename Handler>
void ForEachWrapped(const Tlv* sequence, Handler handle) {
  if (sequence == nullptr) return;
  for (const Tlv& member : sequence->children) {
    if (member.tag == Context(0) && !member.children.empty()) handle(member.children.front());
  }
}

struct ElementTag {
  ElementKind kind;
  bool isQualified;
};

std::optional<ElementTag> ElementOf(std::uint8_t tag) {
  switch (tag) {
    case kNode:
    case kQualifiedNode:
      return ElementTag{ElementKind::Node, tag == kQualifiedNode};
    case kParameter:
    case kQualifiedParameter:
      return ElementTag{ElementKind::Parameter, tag == kQualifiedParameter};
    case kMatrix:
    case kQualifiedMatrix:
      return ElementTag{ElementKind::Matrix, tag == kQualifiedMatrix};
    case kFunction:
    case kQualifiedFunction:
      return ElementTag{ElementKind::Function, tag == kQualifiedFunction};
    default:
      return std::nullopt;
  }
}

class GlowParser {
 public:
  // A member of the root's collection, or of the children of the element at `parent`.
  void ReadElement(const Tlv& tlv, ElementKind parentKind, const Path& parent) {
    if (tlv.tag == kCommand) return ReadCommand(tlv, parentKind, parent);
    const std::optional<ElementTag> element = ElementOf(tlv.tag);
    if (!element) return;
    Path path = parent;
    if (element->isQualified) {
      std::optional<Path> whole = ReadOid(tlv.Field(0));
      if (!whole || !parent.empty() || whole->size() > kLongestPath) return;
      path = std::move(*whole);
    } else {
      const std::optional<int> number = ReadInt(tlv.Field(0));
      if (!number || *number < 0) return;
      path.push_back(*number);
    }
    bool hasCommand = false;
    ForEachWrapped(tlv.Field(2), [&](const Tlv& child) {
      hasCommand = hasCommand || child.tag == kCommand;
      ReadElement(child, element->kind, path);
    });
    if (hasCommand) return;
    if (element->kind == ElementKind::Parameter) ReadValue(tlv, path);
    if (element->kind == ElementKind::Matrix) ReadConnections(tlv, path);
  }

  std::vector<Request> requests;

 private:
  void ReadCommand(const Tlv& tlv, ElementKind element, const Path& path) {
    const std::optional<int> number = ReadInt(tlv.Field(0));
    if (!number) return;
    Request request{.element = element, .path = path};
    switch (*number) {
      case kSubscribe:
        request.kind = Request::Kind::Subscribe;
        break;
      case kUnsubscribe:
        request.kind = Request::Kind::Unsubscribe;
        break;
      case kGetDirectory:
        request.kind = Request::Kind::GetDirectory;
        break;
      case kInvoke:
        request.kind = Request::Kind::Invoke;
        if (const Tlv* const invocation = tlv.Field(2); invocation != nullptr) {
          request.invocation = ReadInt(invocation->Field(0));
          ForEachWrapped(invocation->Field(1), [&](const Tlv& argument) {
            request.arguments.push_back(ReadGlowValue(&argument));
          });
        }
        break;
      default:
        return;
    }
    requests.push_back(std::move(request));
  }

  void ReadValue(const Tlv& tlv, const Path& path) {
    const Tlv* const contents = tlv.Field(1);
    const Tlv* const value = contents == nullptr ? nullptr : contents->Field(2);
    if (value == nullptr) return;
    requests.push_back({.kind = Request::Kind::SetValue,
                        .element = ElementKind::Parameter,
                        .path = path,
                        .value = ReadGlowValue(value)});
  }

  void ReadConnections(const Tlv& tlv, const Path& path) {
    Request request{.kind = Request::Kind::Connect, .element = ElementKind::Matrix, .path = path};
    ForEachWrapped(tlv.Field(5), [&](const Tlv& connection) {
      if (connection.tag != kConnection) return;
      const std::optional<int> target = ReadInt(connection.Field(0));
      if (!target) return;
      Connection asked{.target = *target};
      // What is there and cannot be read must not be taken for what holds when it is missing: that
      // would be a row without sources.
      if (connection.Child(Context(1)) != nullptr) {
        std::optional<Path> sources = ReadOid(connection.Field(1));
        if (!sources) return;
        asked.sources = std::move(*sources);
      }
      if (connection.Child(Context(2)) != nullptr) {
        const int operation = ReadInt(connection.Field(2)).value_or(-1);
        if (operation < 0 || operation > 2) return;
        asked.operation = static_cast<Operation>(operation);
      }
      request.connections.push_back(std::move(asked));
    });
    if (!request.connections.empty()) requests.push_back(std::move(request));
  }
};

// Building.

Bytes Text(unsigned field, std::string_view text) {
  return BerValue(Context(field), BerUtf8(text));
}
Bytes Number(unsigned field, int number) { return BerValue(Context(field), BerInteger(number)); }
Bytes Oid(unsigned field, const Path& path) { return BerValue(Context(field), BerOid(path)); }

// A description may be missing; no sense in sending an empty one.
Bytes Description(std::string_view text) { return text.empty() ? Bytes() : Text(1, text); }

Bytes Join(std::span<const Bytes> parts) {
  std::size_t size = 0;
  for (const Bytes& part : parts) size += part.size();
  Bytes joined;
  joined.reserve(size);
  for (const Bytes& part : parts) joined.insert(joined.end(), part.begin(), part.end());
  return joined;
}

Bytes BuildValue(const GlowValue& value) {
  if (const auto* const number = std::get_if<std::int64_t>(&value)) {
    return BerInteger(static_cast<int>(*number));
  }
  if (const auto* const flag = std::get_if<bool>(&value)) return BerBoolean(*flag);
  if (const auto* const text = std::get_if<std::string>(&value)) return BerUtf8(*text);
  return {};
}

int TypeOf(const GlowValue& value) {
  if (std::holds_alternative<bool>(value)) return kBooleanParameter;
  return std::holds_alternative<std::string>(value) ? kStringParameter : kIntegerParameter;
}

// Contents in their field.
Bytes Contents(std::initializer_list<Bytes> fields) {
  return BerValue(Context(1), BerValue(kSet, fields));
}

Bytes BuildContents(const NodeContents& contents) {
  return Contents({Text(0, contents.identifier), Description(contents.description)});
}

Bytes BuildContents(const MatrixContents& contents) {
  const Bytes label =
      BerValue(kLabel, {Oid(0, contents.labels), Text(1, contents.labelsDescription)});
  return Contents({Text(0, contents.identifier), Description(contents.description),
                   Number(2, kManyToMany), Number(3, kLinear), Number(4, contents.targetCount),
                   Number(5, contents.sourceCount), Oid(8, contents.parameters),
                   BerValue(Context(10), BerValue(kSequence, BerValue(Context(0), label)))});
}

Bytes BuildItems(unsigned field, std::span<const TupleItem> items) {
  std::vector<Bytes> parts;
  for (const TupleItem& item : items) {
    parts.push_back(BerValue(
        Context(0),
        BerValue(kTupleItem, {Number(0, static_cast<int>(item.type)), Text(1, item.name)})));
  }
  return BerValue(Context(field), BerValue(kSequence, Join(parts)));
}

Bytes BuildConnections(std::span<const Connection> connections) {
  std::vector<Bytes> parts;
  parts.reserve(connections.size());
  for (const Connection& connection : connections) {
    const bool isTally = connection.disposition == Disposition::Tally;
    parts.push_back(BerValue(
        Context(0),
        BerValue(kConnection,
                 {Number(0, connection.target), Oid(1, connection.sources), Number(2, 0),
                  isTally ? Bytes() : Number(3, static_cast<int>(connection.disposition))})));
  }
  return BerValue(Context(5), BerValue(kSequence, Join(parts)));
}

}  // namespace

std::optional<std::vector<Request>> ParseGlow(std::span<const std::uint8_t> message) {
  const std::optional<std::vector<Tlv>> values = ParseBer(message);
  if (!values) return std::nullopt;
  GlowParser parser;
  for (const Tlv& root : *values) {
    if (root.tag != kRoot) continue;
    ForEachWrapped(root.Child(kRootElementCollection),
                   [&](const Tlv& element) { parser.ReadElement(element, ElementKind::Root, {}); });
  }
  return std::move(parser.requests);
}

Bytes QualifiedNode(const Path& path, const NodeContents& contents) {
  return BerValue(kQualifiedNode, {Oid(0, path), BuildContents(contents)});
}

Bytes QualifiedParameter(const Path& path, const ParameterContents& contents) {
  return BerValue(
      kQualifiedParameter,
      {Oid(0, path), Contents({Text(0, contents.identifier), Description(contents.description),
                               BerValue(Context(2), BuildValue(contents.value)),
                               contents.minimum ? Number(3, *contents.minimum) : Bytes(),
                               contents.maximum ? Number(4, *contents.maximum) : Bytes(),
                               Number(5, static_cast<int>(contents.access)),
                               Number(13, TypeOf(contents.value))})});
}

Bytes QualifiedFunction(const Path& path, const FunctionContents& contents) {
  return BerValue(kQualifiedFunction,
                  {Oid(0, path),
                   Contents({Text(0, contents.identifier), Description(contents.description),
                             BuildItems(2, contents.arguments), BuildItems(3, contents.result)})});
}

Bytes QualifiedMatrix(const Path& path, const MatrixContents& contents) {
  return BerValue(kQualifiedMatrix, {Oid(0, path), BuildContents(contents)});
}

// Some consumers wait for children for ever when none are sent.
Bytes QualifiedMatrix(const Path& path, const MatrixContents& contents,
                      std::span<const Connection> connections) {
  return BerValue(kQualifiedMatrix, {Oid(0, path), BuildContents(contents),
                                     BerValue(Context(2), BerValue(kElementCollection, Bytes())),
                                     BuildConnections(connections)});
}

Bytes EmptyNode(const Path& path) { return BerValue(kQualifiedNode, {Oid(0, path)}); }

Bytes TopNode(int number, const NodeContents& contents) {
  return BerValue(kNode, {Number(0, number), BuildContents(contents)});
}

Bytes ParameterValue(const Path& path, const GlowValue& value) {
  return BerValue(kQualifiedParameter,
                  {Oid(0, path), Contents({BerValue(Context(2), BuildValue(value))})});
}

Bytes MatrixConnections(const Path& path, std::span<const Connection> connections) {
  return BerValue(kQualifiedMatrix, {Oid(0, path), BuildConnections(connections)});
}

Bytes GlowMessage(std::span<const Bytes> elements) {
  std::vector<Bytes> parts;
  parts.reserve(elements.size());
  for (const Bytes& element : elements) parts.push_back(BerValue(Context(0), element));
  return BerValue(kRoot, BerValue(kRootElementCollection, Join(parts)));
}

Bytes InvocationResult(int invocation, bool success, std::span<const GlowValue> results) {
  std::vector<Bytes> parts;
  for (const GlowValue& result : results) {
    parts.push_back(BerValue(Context(0), BuildValue(result)));
  }
  return BerValue(kRoot, BerValue(kInvocationResult,
                                  {Number(0, invocation), BerValue(Context(1), BerBoolean(success)),
                                   BerValue(Context(2), BerValue(kSequence, Join(parts)))}));
}

}  // namespace ember
