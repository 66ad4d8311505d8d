// SPDX-License-Identifier: MIT
//
// Every sample file reads as an independent reader reads it.

#include <gtest/gtest.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <algorithm>
#include <string>
#include <vector>

#include "tests/jet/jet_support.h"
#include "tests/support/temporary_folder.h"
#include "tools/mdbdump/json_dump.h"

namespace {

using testing::IsEmpty;

constexpr int kMostDifferences = 20;  // shown of one file

QJsonValue ParseJson(const std::string& text) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
  return document.object();
}

std::string Show(const QJsonValue& value) {
  if (value.isUndefined()) return "(nothing)";
  const QByteArray json = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
  return json.left(200).toStdString();
}

// Appends "path: found, expected" for each place where the values differ.
void Compare(const QJsonValue& found, const QJsonValue& expected, const std::string& path,
             std::vector<std::string>* differences) {
  if (differences->size() >= kMostDifferences || found == expected) return;
  if (found.isObject() && expected.isObject()) {
    QStringList keys = found.toObject().keys() + expected.toObject().keys();
    keys.removeDuplicates();
    for (const QString& key : keys) {
      Compare(found.toObject().value(key), expected.toObject().value(key),
              path + "/" + key.toStdString(), differences);
    }
  } else if (found.isArray() && expected.isArray()) {
    const auto count = std::max(found.toArray().size(), expected.toArray().size());
    for (qsizetype i = 0; i < count; ++i) {
      // at() past the end gives Undefined, which equals nothing else.
      Compare(found.toArray().at(i), expected.toArray().at(i), path + "/" + std::to_string(i),
              differences);
    }
  } else {
    differences->push_back(path + ": " + Show(found) + ", expected " + Show(expected));
  }
}

class GoldenTest : public testing::TestWithParam<std::string> {};

TEST_P(GoldenTest, ReadsAsTheOtherReaderDoes) {
  const auto database = test::OpenSample(GetParam());
  ASSERT_NE(database, nullptr);
  std::string dump;
  std::vector<std::string> problems;
  ASSERT_THAT(mdbdump::AppendJson(*database, &dump, &problems), test::IsOk());
  EXPECT_THAT(problems, IsEmpty());

  const auto golden = test::SamplePath(GetParam()).replace_extension(".json");
  std::vector<std::string> differences;
  Compare(ParseJson(dump), ParseJson(test::ReadFile(golden)), "", &differences);
  EXPECT_THAT(differences, IsEmpty());
}

TEST_P(GoldenTest, IsSound) { EXPECT_EQ(test::Problems(*test::OpenSample(GetParam())), ""); }

INSTANTIATE_TEST_SUITE_P(Samples, GoldenTest, testing::ValuesIn(test::SampleNames()),
                         [](const auto& sample) { return sample.param; });

TEST(GoldenComparison, FindsEveryKindOfDifference) {
  const auto differences = [](const char* found, const char* expected) {
    std::vector<std::string> list;
    Compare(ParseJson(found), ParseJson(expected), "", &list);
    return list;
  };
  using List = std::vector<std::string>;
  EXPECT_EQ(differences(R"({"a":[1,{"b":"x"}]})", R"({"a":[1,{"b":"x"}]})"), List{});
  EXPECT_EQ(differences(R"({"a":[1,{"b":"x"}]})", R"({"a":[1,{"b":"y"}]})"),
            List{R"(/a/1/b: ["x"], expected ["y"])"});
  EXPECT_EQ(differences(R"({"a":[1,2]})", R"({"a":[1]})"), List{"/a/1: [2], expected (nothing)"});
  EXPECT_EQ(differences(R"({})", R"({"a":null})"), List{"/a: (nothing), expected [null]"});
}

TEST(Samples, AreAllThere) { EXPECT_EQ(test::SampleNames().size(), 15U); }

}  // namespace
