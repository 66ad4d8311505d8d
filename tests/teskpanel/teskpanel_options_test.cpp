// SPDX-License-Identifier: MIT

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/teskpanel/messages.h"
#include "tools/teskpanel/options.h"

namespace teskpanel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string Parse(const std::vector<const char*>& arguments, Options* options) {
  return ParseOptions(arguments, options);
}

TEST(Options, Defaults) {
  Options options;
  EXPECT_EQ(Parse({"map"}, &options), "");
  EXPECT_EQ(options.command, Options::Command::Show);
  EXPECT_EQ(options.mask, kAskMap);
  EXPECT_THAT(options.numbers, IsEmpty());
  EXPECT_EQ(options.host, "127.0.0.1");
  EXPECT_EQ(options.port, 1250);
  EXPECT_EQ(options.type, 30);
  EXPECT_EQ(options.timeout, std::chrono::seconds(30));
  EXPECT_EQ(options.tries, 0);
  EXPECT_FALSE(options.json);
  EXPECT_FALSE(options.help);
}

TEST(Options, AllBeforeAndBehindTheCommand) {
  Options options;
  EXPECT_EQ(Parse({"--host", "desk", "--port=1251", "map", "--type", "mini", "6", "--json", "256",
                   "--timeout", "3", "--tries=4"},
                  &options),
            "");
  EXPECT_EQ(options.host, "desk");
  EXPECT_EQ(options.port, 1251);
  EXPECT_EQ(options.type, 54);
  EXPECT_THAT(options.numbers, ElementsAre(6, 256));
  EXPECT_EQ(options.timeout, std::chrono::seconds(3));
  EXPECT_EQ(options.tries, 4);
  EXPECT_TRUE(options.json);
}

TEST(Options, Types) {
  const std::pair<const char*, int> types[] = {
      {"lrm", 10},  {"automation", 30}, {"tkm-8", 51}, {"tkn-8", 52}, {"multi", 53},
      {"mini", 54}, {"intercom", 55},   {"0", 0},      {"20", 20},    {"127", 127},
  };
  for (const auto& [word, code] : types) {
    Options options;
    EXPECT_EQ(Parse({"--type", word, "map"}, &options), "");
    EXPECT_EQ(options.type, code) << word;
  }
}

TEST(Options, Labels) {
  Options options;
  EXPECT_EQ(Parse({"labels"}, &options), "");
  EXPECT_EQ(options.mask, 0x06);
  EXPECT_EQ(Parse({"labels", "input"}, &options), "");
  EXPECT_EQ(options.mask, 0x02);
  EXPECT_EQ(Parse({"labels", "output"}, &options), "");
  EXPECT_EQ(options.mask, 0x04);
}

TEST(Options, Buttons) {
  Options options;
  EXPECT_EQ(Parse({"buttons", "1", "64"}, &options), "");
  EXPECT_EQ(options.mask, 0x40);
  EXPECT_THAT(options.numbers, ElementsAre(1, 64));
}

TEST(Options, Take) {
  Options options;
  EXPECT_EQ(Parse({"take", "6", "8"}, &options), "");
  EXPECT_EQ(options.command, Options::Command::Take);
  EXPECT_EQ(options.output, 6);
  EXPECT_EQ(options.input, 8);
  EXPECT_EQ(options.action, (TakeAction{36, true}));
  EXPECT_EQ(Parse({"take", "6", "8", "call-off"}, &options), "");
  EXPECT_EQ(options.action, (TakeAction{161, false}));
}

TEST(Options, Watch) {
  Options options;
  EXPECT_EQ(Parse({"watch"}, &options), "");
  EXPECT_EQ(options.command, Options::Command::Watch);
  EXPECT_EQ(options.mask, 0x01);
  EXPECT_EQ(Parse({"watch", "labels", "buttons"}, &options), "");
  EXPECT_EQ(options.mask, 0x46);
}

struct WrongCase {
  std::vector<const char*> arguments;
  const char* complaint;
};

TEST(Options, WrongOnesAreNamed) {
  const WrongCase cases[] = {
      {{}, "no command"},
      {{"maps"}, "unknown command maps"},
      {{"-h"}, "unknown command -h"},
      {{"--hosts", "a", "map"}, "unknown option --hosts"},
      {{"map", "--port"}, "--port needs a value"},
      {{"--port", "0", "map"}, "--port must be 1..65535"},
      {{"--port", "65536", "map"}, "--port must be 1..65535"},
      {{"--host=", "map"}, "--host must be a name"},
      {{"--type", "128", "map"}, "--type must be 0..127 or a name"},
      {{"--type", "panel", "map"}, "--type must be 0..127 or a name"},
      {{"--timeout", "0", "map"}, "--timeout must be 1..3600"},
      {{"--tries", "-1", "map"}, "--tries must be a number from 0"},
      {{"--json=yes", "map"}, "--json takes no value"},
      {{"map", "0"}, "\"0\" is no channel"},
      {{"map", "16385"}, "\"16385\" is no channel"},
      {{"buttons", "x"}, "\"x\" is no channel"},
      {{"labels", "in"}, "labels are of output or input"},
      {{"take", "6"}, "usage: take OUT IN [ACTION]"},
      {{"take", "6", "8", "call", "off"}, "usage: take OUT IN [ACTION]"},
      {{"take", "0", "8"}, "\"0\" is no channel"},
      {{"take", "6", "8x"}, "\"8x\" is no channel"},
      {{"take", "6", "8", "shout"}, "\"shout\" is no action of a take"},
      {{"watch", "tally"}, "\"tally\" cannot be watched"},
  };
  for (const WrongCase& wrong : cases) {
    SCOPED_TRACE(wrong.complaint);
    Options options;
    EXPECT_EQ(Parse(wrong.arguments, &options), wrong.complaint);
  }
}

TEST(Options, HelpNamesEverything) {
  Options options;
  EXPECT_EQ(Parse({"--help"}, &options), "");
  EXPECT_TRUE(options.help);
  const std::string help = HelpText();
  for (const char* word :
       {"  map [OUT...]", "  labels [output|input]", "  buttons [STATION...]",
        "  take OUT IN [ACTION]", "  watch [map] [labels] [buttons]", "  --host NAME", "  --port N",
        "  --type TYPE", "  --timeout SECONDS", "  --tries N", "  --json", "  --help",
        "listen, priority, call, call-priority", "intercom.", "Exit status:"}) {
    EXPECT_THAT(help, HasSubstr(word));
  }
  for (std::size_t start = 0, end = 0; (end = help.find('\n', start)) != help.npos;
       start = end + 1) {
    EXPECT_LE(end - start, 100U) << help.substr(start, end - start);
  }
}

}  // namespace
}  // namespace teskpanel
