// SPDX-License-Identifier: MIT

#include "tests/jet/json_compare.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QStringList>
#include <algorithm>

#include "tests/jet/jet_support.h"
#include "tests/support/temporary_folder.h"
#include "tools/mdbdump/json_dump.h"

namespace test {
namespace {

constexpr int kMostDifferences = 20;

std::string Show(const QJsonValue& value) {
  if (value.isUndefined()) return "(nothing)";
  const QByteArray json = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
  return json.left(200).toStdString();
}

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

}  // namespace

QJsonObject ParseJson(const std::string& text) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
  EXPECT_TRUE(document.isObject());
  return document.object();
}

QJsonObject Dump(const jet::Database& database) {
  std::string json;
  std::vector<std::string> problems;
  EXPECT_THAT(mdbdump::AppendJson(database, &json, &problems), IsOk());
  EXPECT_THAT(problems, testing::IsEmpty());
  return ParseJson(json);
}

QJsonObject GoldenDump(const std::string& sample) {
  return ParseJson(ReadFile(SamplePath(sample).replace_extension(".json")));
}

std::vector<std::string> Differences(const QJsonObject& found, const QJsonObject& expected) {
  std::vector<std::string> differences;
  Compare(found, expected, "", &differences);
  return differences;
}

QJsonObject WithoutPlaces(QJsonObject dump) {
  QJsonObject tables = dump[QLatin1String("tables")].toObject();
  for (auto table : tables) {
    QJsonObject content = table.toObject();
    QHash<QString, int> numbers;
    QJsonArray rows = content[QLatin1String("rows")].toArray();
    for (auto row : rows) {
      QJsonArray values = row.toArray();
      const int number = static_cast<int>(numbers.size());
      numbers.insert(values[0].toString(), number);
      values[0] = number;
      row = values;
    }
    QJsonObject indexes = content[QLatin1String("indexes")].toObject();
    for (auto index : indexes) {
      QJsonObject description = index.toObject();
      QJsonArray entries = description[QLatin1String("entries")].toArray();
      for (auto entry : entries) entry = numbers.value(entry.toString(), -1);
      description[QLatin1String("entries")] = entries;
      index = description;
    }
    content[QLatin1String("rows")] = rows;
    content[QLatin1String("indexes")] = indexes;
    table = content;
  }
  dump[QLatin1String("tables")] = tables;
  return dump;
}

}  // namespace test
