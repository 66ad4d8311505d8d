// SPDX-License-Identifier: MIT
//
// Glow: what a consumer asks for, read from a message, and what the provider answers, as a message.
// Targets and sources count from 0 here.

#ifndef GATEWAY_EMBER_GLOW_H_
#define GATEWAY_EMBER_GLOW_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "gateway/ember/ber.h"

namespace ember {

// The value of a parameter or an argument; nothing for one of a type that is not used here.
using GlowValue = std::variant<std::monostate, std::int64_t, double, bool, std::string>;

enum class Operation : std::uint8_t { Absolute, Connect, Disconnect };

enum class Disposition : std::uint8_t { Tally, Modified, Pending, Locked };

// A target of a matrix and its sources.
struct Connection {
  int target = 0;
  std::vector<int> sources = {};
  Operation operation = Operation::Absolute;
  Disposition disposition = Disposition::Tally;

  bool operator==(const Connection&) const = default;
};

// What an element is.
enum class ElementKind : std::uint8_t { Root, Node, Parameter, Matrix, Function };

// What a consumer asks for.
struct Request {
  enum class Kind : std::uint8_t {
    Subscribe,
    Unsubscribe,
    GetDirectory,
    Invoke,
    SetValue,
    Connect
  };

  Kind kind = Kind::GetDirectory;
  ElementKind element = ElementKind::Root;
  Path path = {};                            // of the element; empty for the root
  GlowValue value = {};                      // SetValue
  std::vector<Connection> connections = {};  // Connect
  std::optional<int> invocation = {};        // Invoke: its number, if an answer is wanted
  std::vector<GlowValue> arguments = {};     // Invoke
};

// Reads a consumer's message; nothing when it is no readable BER.  What the console does not know
// is left out.  An element with a command says nothing else: some consumers send what they remember
// of it along.
std::optional<std::vector<Request>> ParseGlow(std::span<const std::uint8_t> message);

// The contents of elements.  What is not set is not sent.

struct NodeContents {
  std::string identifier = {};
  std::string description = {};
};

enum class Access : std::uint8_t { None, Read, Write, ReadWrite };

struct ParameterContents {
  std::string identifier = {};
  std::string description = {};
  GlowValue value = {};  // an integer, a boolean or a text
  std::optional<int> minimum = {};
  std::optional<int> maximum = {};
  Access access = Access::Read;
};

struct MatrixContents {
  std::string identifier = {};
  std::string description = {};
  int targetCount = 0;
  int sourceCount = 0;
  Path parameters = {};                // where those of its targets and sources stand
  Path labels = {};                    // where their labels stand...
  std::string labelsDescription = {};  // ...and what these are
};

struct TupleItem {
  enum class Type : std::uint8_t { Integer = 1, Boolean = 4 };
  Type type;
  std::string name;
};

struct FunctionContents {
  std::string identifier = {};
  std::string description = {};
  std::vector<TupleItem> arguments = {};
  std::vector<TupleItem> result = {};
};

// One element of a message, by its whole path.
Bytes QualifiedNode(const Path& path, const NodeContents& contents);
Bytes QualifiedParameter(const Path& path, const ParameterContents& contents);
Bytes QualifiedFunction(const Path& path, const FunctionContents& contents);
// A matrix in the list of its parent, and itself with the connections of all targets.
Bytes QualifiedMatrix(const Path& path, const MatrixContents& contents);
Bytes QualifiedMatrix(const Path& path, const MatrixContents& contents,
                      std::span<const Connection> connections);
// A node that is there and has nothing below it.
Bytes EmptyNode(const Path& path);
// The topmost node, by its number.
Bytes TopNode(int number, const NodeContents& contents);

// A parameter with nothing but its value, and a matrix with nothing but connections.
Bytes ParameterValue(const Path& path, const GlowValue& value);
Bytes MatrixConnections(const Path& path, std::span<const Connection> connections);

// A whole message of such elements.
Bytes GlowMessage(std::span<const Bytes> elements);

// A whole message that answers an invocation.
Bytes InvocationResult(int invocation, bool success, std::span<const GlowValue> results);

}  // namespace ember

#endif  // GATEWAY_EMBER_GLOW_H_
