// SPDX-License-Identifier: MIT
//
// What the commands send and print, over a session that is fed literal bytes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/hex.h"
#include "tools/teskpanel/session.h"
#include "tools/teskpanel/show_task.h"
#include "tools/teskpanel/take_task.h"
#include "tools/teskpanel/watch_task.h"

namespace teskpanel {
namespace {

using test::FromHex;
using test::Hex;

constexpr char kAsk[] = "81 00 00 FF";
constexpr char kReply[] = "81 1E 1E FF F5";  // of type 30, and the poll behind it
constexpr char kAskForMap[] = "F2 00 01 00 00 00 00 00 00 01 FF";

constexpr char kNothingMade[] = "F6 00 02 00 00 00 00 00 00 00 00 00 02 FF";
constexpr char kOneHearsTwo[] = "F6 00 02 00 00 00 01 00 00 01 00 00 00 00 04 FF";
constexpr char kRowOneHearsTwo[] = "F6 00 01 00 00 00 01 00 00 01 00 03 FF";
constexpr char kRowOneHearsNothing[] = "F6 00 01 00 00 00 00 00 00 01 FF";
constexpr char kRowTwoHearsOne[] = "F6 00 01 00 01 00 01 00 00 00 00 03 FF";

constexpr char kStationLabels[] =
    "FC 14 08 02 00 00 00 53 54 55 44 49 4F 20 31 00 00 43 41 4D 20 32 20 20 20 01 00 4B FF";
constexpr char kStationLabelsChanged[] =
    "FC 14 08 02 00 00 00 53 54 55 44 49 4F 20 31 00 00 43 41 4D 20 33 20 20 20 01 00 4C FF";
constexpr char kInputLabels[] =
    "FC 0A 08 02 00 00 00 4D 49 43 20 31 20 20 20 00 00 4D 49 43 20 32 20 20 20 01 00 2A FF";

constexpr char kStations[] = "FB 00 02 00 00 00 01 00 02 00 05 FF";
constexpr char kButtons[] =
    "FD 00 02 00 00 00 02 00 02 00 04 00 02 00 01 00 03 00 7F 01 00 00 00 00 03 00 00 00 00 00 "
    "7F 01 7F 7F 00 00 11 FF";
constexpr char kButtonsChanged[] =
    "FD 00 02 00 00 00 02 00 02 00 04 00 02 00 01 00 03 00 00 00 00 00 00 00 03 00 00 00 00 00 "
    "7F 01 7F 7F 00 00 11 FF";

// A task on one connection after the other.
template <typename TaskType>
class Bench {
 public:
  template <typename... Arguments>
  explicit Bench(bool json, Arguments... arguments)
      : printer_(json), task_(std::move(arguments)..., printer_) {
    Connect();
  }

  void Connect() { session_ = std::make_unique<Session>(30, task_); }

  // The console sends `hex`; what the panel sends upon it.
  std::string Receive(const char* hex) {
    EXPECT_TRUE(session_->Receive(FromHex(hex))) << session_->Problem();
    return Hex(session_->TakeOutput());
  }

  // Through the identification; what the panel then asks for.
  std::string Serve(const char* linkAnswer = "F4") {
    EXPECT_EQ(Receive(kAsk), kReply);
    return Receive(linkAnswer);
  }

  std::string Printed() { return printer_.TakeText(); }
  const std::optional<Outcome>& Result() const { return task_.Result(); }
  TaskType& GetTask() { return task_; }
  Session& GetSession() { return *session_; }

 private:
  Printer printer_;
  TaskType task_;
  std::unique_ptr<Session> session_;
};

using Numbers = std::vector<int>;

struct ShowBench : Bench<ShowTask> {
  explicit ShowBench(int mask, Numbers numbers = {}, bool json = false)
      : Bench(json, mask, std::move(numbers)) {}
};

struct TakeBench : Bench<TakeTask> {
  TakeBench(int output, int input, const char* action = "listen", bool json = false)
      : Bench(json, output, input, ParseTakeAction(action).value()) {}
};

struct WatchBench : Bench<WatchTask> {
  explicit WatchBench(int mask, bool json = false) : Bench(json, mask, std::string("desk:1250")) {}
};

TEST(Session, SaysNothingUntilItIsAsked) {
  ShowBench bench(kAskMap);
  EXPECT_EQ(bench.Receive("F4 F1"), "");
  EXPECT_FALSE(bench.GetSession().IsAsked());
  EXPECT_EQ(bench.Receive(kAsk), kReply);
  EXPECT_TRUE(bench.GetSession().IsAsked());
  EXPECT_FALSE(bench.GetSession().IsServed());
}

TEST(Session, TablesBeforeItIsServedAreNotForIt) {
  ShowBench bench(kAskMap);
  bench.Receive(kAsk);
  EXPECT_EQ(bench.Receive(kOneHearsTwo), "");
  EXPECT_EQ(bench.Printed(), "");
  EXPECT_EQ(bench.Receive("F4"), std::string(kAskForMap) + " F5");
}

TEST(Session, UnknownFramesArePassedOver) {
  ShowBench bench(kAskMap);
  bench.Serve();
  EXPECT_EQ(bench.Receive("90 01 02 03 FF"), "");
  bench.Receive(kOneHearsTwo);
  EXPECT_EQ(bench.Result(), Outcome{});
}

TEST(Session, TablesThatAreNotWhatTheySayEndIt) {
  const std::pair<const char*, const char*> cases[] = {
      {"F6 00 02 00 00 00 02 FF", "a crosspoint map is not what it says it is"},
      {"FC 14 08 01 00 00 00 1D FF", "a label table is not what it says it is"},
      {"FB 00 02 00 00 00 02 FF", "a list of stations is not what it says it is"},
      {"FD 00 01 00 00 00 00 00 01 FF", "a button programming is not what it says it is"},
  };
  for (const auto& [frame, problem] : cases) {
    SCOPED_TRACE(problem);
    ShowBench bench(kAskMap);
    bench.Serve();
    EXPECT_FALSE(bench.GetSession().Receive(FromHex(frame)));
    EXPECT_EQ(bench.GetSession().Problem(), problem);
    EXPECT_FALSE(bench.GetSession().Receive(FromHex("F4")));
  }
}

TEST(ShowMap, ForPeople) {
  ShowBench bench(kAskMap);
  EXPECT_EQ(bench.Serve(), std::string(kAskForMap) + " F5");
  bench.Receive("F4");
  EXPECT_FALSE(bench.Result().has_value());
  bench.Receive("F6 00 03 00 00 00 01 00 00 01 00 00 00 00 02 00 05 00 00 02 00 0E FF");
  EXPECT_EQ(bench.Printed(),
            "output 1: 2\n"
            "output 3: 1 3 (status 5)\n"
            "3 outputs, 3 crosspoints\n");
  EXPECT_EQ(bench.Result(), Outcome{});
}

TEST(ShowMap, ForScripts) {
  ShowBench bench(kAskMap, {}, true);
  bench.Serve();
  bench.Receive("F6 00 03 00 00 00 01 00 00 01 00 00 00 00 02 00 05 00 00 02 00 0E FF");
  EXPECT_EQ(bench.Printed(),
            "{\"event\":\"row\",\"output\":1,\"status\":0,\"inputs\":[2]}\n"
            "{\"event\":\"row\",\"output\":2,\"status\":0,\"inputs\":[]}\n"
            "{\"event\":\"row\",\"output\":3,\"status\":5,\"inputs\":[1,3]}\n");
}

TEST(ShowMap, ARowThatComesBetweenIsNoAnswer) {
  ShowBench bench(kAskMap);
  bench.Serve();
  bench.Receive(kRowTwoHearsOne);
  EXPECT_EQ(bench.Printed(), "");
  EXPECT_FALSE(bench.Result().has_value());
  bench.Receive(kOneHearsTwo);
  bench.Receive(kOneHearsTwo);
  EXPECT_EQ(bench.Printed(), "output 1: 2\n2 outputs, 1 crosspoints\n");
}

TEST(ShowMap, OnlyTheOutputsThatAreAskedFor) {
  ShowBench bench(kAskMap, {2});
  bench.Serve();
  bench.Receive(kOneHearsTwo);
  EXPECT_EQ(bench.Printed(), "output 2: nothing\n");
  EXPECT_EQ(bench.Result(), Outcome{});
}

TEST(ShowMap, AnOutputThatDoesNotExist) {
  ShowBench bench(kAskMap, {1, 3});
  bench.Serve();
  bench.Receive(kOneHearsTwo);
  EXPECT_EQ(bench.Printed(), "");
  EXPECT_EQ(bench.Result(), (Outcome{ExitCode::Usage, "there is no output 3; the last one is 2"}));
}

TEST(ShowMap, WithoutASwitcherNothingIsAskedFor) {
  ShowBench bench(kAskMap);
  EXPECT_EQ(bench.Serve("F1"), "");
  EXPECT_EQ(bench.Result(), (Outcome{ExitCode::LinkDown, "the console has no switcher connected"}));
}

TEST(ShowMap, TheSwitcherGoesJustThen) {
  ShowBench bench(kAskMap);
  bench.Serve();
  bench.Receive("F1");
  bench.Receive(kOneHearsTwo);
  EXPECT_EQ(bench.Printed(), "");
  EXPECT_EQ(bench.Result()->code, ExitCode::LinkDown);
}

TEST(ShowMap, NoAnswer) {
  ShowBench bench(kAskMap);
  bench.Serve();
  EXPECT_EQ(bench.GetTask().TimeIsOver(),
            (Outcome{ExitCode::NoAnswer, "the console does not answer"}));
}

TEST(ShowLabels, BothKindsInAnyOrder) {
  ShowBench bench(kAskInputLabels | kAskStationLabels);
  EXPECT_EQ(bench.Serve(), "F2 00 06 00 00 00 00 00 00 06 FF F5");
  bench.Receive(kStationLabels);
  EXPECT_FALSE(bench.Result().has_value());
  bench.Receive(kInputLabels);
  EXPECT_EQ(bench.Printed(),
            "output 1: \"STUDIO 1\"\n"
            "output 2: \"CAM 2\"\n"
            "input 1: \"MIC 1\"\n"
            "input 2: \"MIC 2\"\n");
  EXPECT_EQ(bench.Result(), Outcome{});
}

TEST(ShowLabels, OneKind) {
  ShowBench bench(kAskStationLabels, {}, true);
  EXPECT_EQ(bench.Serve(), "F2 00 04 00 00 00 00 00 00 04 FF F5");
  bench.Receive(kInputLabels);
  EXPECT_FALSE(bench.Result().has_value());
  bench.Receive(kStationLabels);
  EXPECT_EQ(bench.Printed(),
            "{\"event\":\"label\",\"kind\":\"output\",\"station\":1,\"text\":\"STUDIO 1\"}\n"
            "{\"event\":\"label\",\"kind\":\"output\",\"station\":2,\"text\":\"CAM 2\"}\n");
}

TEST(ShowLabels, WhatATerminalWouldActOnIsEscaped) {
  constexpr char kOdd[] = "FC 0A 08 01 00 00 00 22 5C 1B 20 20 20 20 20 47 01 14 FF";
  ShowBench text(kAskInputLabels);
  text.Serve();
  text.Receive(kOdd);
  EXPECT_EQ(text.Printed(), "input 200: \"\\\"\\\\\\x1B\"\n");
  ShowBench json(kAskInputLabels, {}, true);
  json.Serve();
  json.Receive(kOdd);
  EXPECT_EQ(
      json.Printed(),
      "{\"event\":\"label\",\"kind\":\"input\",\"station\":200,\"text\":\"\\\"\\\\\\u001b\"}\n");
}

TEST(ShowButtons, ForPeople) {
  ShowBench bench(kAskProgramming);
  EXPECT_EQ(bench.Serve(), "F2 00 40 00 00 00 00 00 00 40 FF F5");
  bench.Receive(kStations);
  bench.Receive(kButtons);
  EXPECT_EQ(bench.Printed(),
            "station 1 button 1: talk, first 5, stations 2 4\n"
            "station 2 button 1: group, first 1\n"
            "2 stations, 2 active buttons\n");
  EXPECT_EQ(bench.Result(), Outcome{});
}

TEST(ShowButtons, ForScriptsOfOneStation) {
  ShowBench bench(kAskProgramming, {2}, true);
  bench.Serve();
  bench.Receive(kStations);
  bench.Receive(kButtons);
  EXPECT_EQ(bench.Printed(),
            "{\"event\":\"button\",\"station\":2,\"button\":1,\"type\":\"group\",\"first\":1,"
            "\"stations\":[]}\n"
            "{\"event\":\"button\",\"station\":2,\"button\":2,\"type\":\"inactive\",\"first\":0,"
            "\"stations\":[]}\n");
}

TEST(Take, GoesOutWhenTheMapIsThereAndEndsWithItsRow) {
  TakeBench bench(1, 2);
  EXPECT_EQ(bench.Serve(), kAskForMap);
  EXPECT_EQ(bench.Receive(kRowTwoHearsOne), "");  // not the whole map
  EXPECT_EQ(bench.Receive(kNothingMade), "FE 24 00 00 00 01 00 25 FF F5");
  bench.Receive("F4");
  bench.Receive(kRowTwoHearsOne);
  bench.Receive(kRowOneHearsNothing);
  EXPECT_FALSE(bench.Result().has_value());
  EXPECT_EQ(
      bench.GetTask().TimeIsOver(),
      (Outcome{ExitCode::NotConfirmed, "the switcher does not report the crosspoint as asked"}));
  bench.Receive(kRowOneHearsTwo);
  EXPECT_EQ(bench.Printed(), "output 1 hears input 2\n");
  EXPECT_EQ(bench.Result(), Outcome{});
}

TEST(Take, Off) {
  TakeBench bench(1, 2, "call-off", true);
  bench.Serve();
  EXPECT_EQ(bench.Receive(kOneHearsTwo), "FE 21 01 00 00 01 00 23 FF F5");
  bench.Receive("F4");
  EXPECT_FALSE(bench.Result().has_value());
  bench.Receive(kRowOneHearsNothing);
  EXPECT_EQ(bench.Printed(), "{\"event\":\"take\",\"output\":1,\"input\":2,\"made\":false}\n");
  EXPECT_EQ(bench.Result(), Outcome{});
}

TEST(Take, OfACrosspointThatStandsEndsWhenTheConsoleHasReadIt) {
  TakeBench bench(1, 2, "priority");
  bench.Serve();
  EXPECT_EQ(bench.Receive(kOneHearsTwo), "FE 25 00 00 00 01 00 26 FF F5");
  EXPECT_FALSE(bench.Result().has_value());
  bench.Receive("F4");
  bench.Receive(kRowOneHearsTwo);
  EXPECT_EQ(bench.Printed(), "output 1 hears input 2\n");
  EXPECT_EQ(bench.Result(), Outcome{});
}

TEST(Take, OfAChannelThatDoesNotExistSendsNothing) {
  TakeBench output(3, 1);
  output.Serve();
  EXPECT_EQ(output.Receive(kNothingMade), "");
  EXPECT_EQ(output.Result(), (Outcome{ExitCode::Usage, "there is no output 3; the last one is 2"}));
  TakeBench input(1, 257);
  input.Serve();
  EXPECT_EQ(input.Receive(kNothingMade), "");
  EXPECT_EQ(input.Result(), (Outcome{ExitCode::Usage, "there is no input 257; the last one is 2"}));
}

TEST(Take, WithoutASwitcher) {
  TakeBench before(1, 2);
  EXPECT_EQ(before.Serve("F1"), "");
  EXPECT_EQ(before.Result()->code, ExitCode::LinkDown);
  TakeBench then(1, 2);
  then.Serve();
  then.Receive(kNothingMade);
  then.Receive("F1");
  EXPECT_EQ(then.Result()->code, ExitCode::LinkDown);
}

TEST(Watch, TheMapAndThenWhatChanges) {
  WatchBench bench(kAskMap);
  EXPECT_EQ(bench.Serve(), kAskForMap);
  EXPECT_EQ(bench.Printed(), "connected to desk:1250; the switcher is connected\n");
  bench.Receive(kOneHearsTwo);
  EXPECT_EQ(bench.Printed(), "output 1: 2\n");
  bench.Receive(kRowOneHearsTwo);
  bench.Receive(kStationLabels);
  bench.Receive(kStations);
  bench.Receive(kButtons);
  EXPECT_EQ(bench.Printed(), "");
  bench.Receive(kRowTwoHearsOne);
  bench.Receive(kRowOneHearsNothing);
  EXPECT_EQ(bench.Printed(), "output 2: 1\noutput 1: nothing\n");
  EXPECT_FALSE(bench.Result().has_value());
}

TEST(Watch, ForScriptsTheStartIsWhole) {
  WatchBench bench(kAskMap, true);
  bench.Serve();
  bench.Receive(kOneHearsTwo);
  EXPECT_EQ(bench.Printed(),
            "{\"event\":\"connected\",\"to\":\"desk:1250\",\"link\":true}\n"
            "{\"event\":\"row\",\"output\":1,\"status\":0,\"inputs\":[2]}\n"
            "{\"event\":\"row\",\"output\":2,\"status\":0,\"inputs\":[]}\n");
}

TEST(Watch, LabelsAndButtons) {
  WatchBench bench(kAskInputLabels | kAskStationLabels | kAskProgramming);
  EXPECT_EQ(bench.Serve(), "F2 00 46 00 00 00 00 00 00 46 FF");
  bench.Receive(kStationLabels);
  bench.Receive(kStations);
  bench.Receive(kButtons);
  bench.Receive(kOneHearsTwo);
  EXPECT_EQ(bench.Printed(),
            "connected to desk:1250; the switcher is connected\n"
            "output 1: \"STUDIO 1\"\n"
            "output 2: \"CAM 2\"\n"
            "station 1 button 1: talk, first 5, stations 2 4\n"
            "station 2 button 1: group, first 1\n");
  bench.Receive(kStationLabelsChanged);
  bench.Receive(kStations);
  bench.Receive(kButtonsChanged);
  EXPECT_EQ(bench.Printed(),
            "output 2: \"CAM 3\"\n"
            "station 1 button 2: listen, first 1\n");
  bench.Receive(kStations);
  bench.Receive(kButtons);
  EXPECT_EQ(bench.Printed(), "station 1 button 2: inactive, first 1\n");
}

TEST(Watch, TheLinkGoesAndComes) {
  WatchBench bench(kAskMap);
  EXPECT_EQ(bench.Serve("F1"), "");
  EXPECT_EQ(bench.Printed(), "connected to desk:1250; the switcher is not connected\n");
  EXPECT_EQ(bench.Receive("F1"), "");
  EXPECT_EQ(bench.Receive("F4"), kAskForMap);
  EXPECT_EQ(bench.Receive("F4"), "");
  EXPECT_EQ(bench.Printed(), "the switcher is connected\n");
  EXPECT_EQ(bench.Receive("F1"), "");
  EXPECT_EQ(bench.Printed(), "the switcher is not connected\n");
}

TEST(Watch, AfterAGapOnlyWhatHasChangedMeanwhile) {
  WatchBench bench(kAskMap, true);
  bench.Serve();
  bench.Receive(kOneHearsTwo);
  bench.Printed();
  bench.Connect();
  EXPECT_EQ(bench.Serve(), kAskForMap);
  bench.Receive(kNothingMade);
  EXPECT_EQ(bench.Printed(),
            "{\"event\":\"connected\",\"to\":\"desk:1250\",\"link\":true}\n"
            "{\"event\":\"row\",\"output\":1,\"status\":0,\"inputs\":[]}\n");
}

}  // namespace
}  // namespace teskpanel
