// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for a damaged configuration database and salvages it.  Whatever comes, the
// salvage succeeds, the new file is sound, and it holds the records that the report speaks of: with
// the defaults, every one that there should be.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "db/damage.h"
#include "db/salvage.h"
#include "db/schema.h"

namespace {

// What is longer tells nothing new.
constexpr std::size_t kLargestFile = std::size_t{2} << 20;

void Require(bool holds) {
  if (!holds) std::abort();
}

// A file that outlives the database on it.
class SharedFile : public jet::PageFile {
 public:
  explicit SharedFile(std::shared_ptr<jet::MemoryPageFile> file) : file_(std::move(file)) {}

  jet::Status Size(std::uint64_t* size) override { return file_->Size(size); }
  jet::Status Read(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
    return file_->Read(offset, bytes);
  }
  jet::Status Write(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
    return file_->Write(offset, bytes);
  }
  jet::Status Truncate(std::uint64_t size) override { return file_->Truncate(size); }

 private:
  const std::shared_ptr<jet::MemoryPageFile> file_;
};

void Salvage(const std::vector<std::uint8_t>& bytes, db::Fill fill) {
  const auto made = std::make_shared<jet::MemoryPageFile>();
  db::SalvageReport report;
  Require(db::Salvage(std::make_unique<jet::MemoryPageFile>(bytes),
                      std::make_unique<SharedFile>(made), fill, &report)
              .ok());

  std::unique_ptr<jet::Database> database;
  db::Damage damage;
  Require(jet::Database::Open(std::make_unique<SharedFile>(made), jet::Access::ReadOnly, &database)
              .ok());
  Require(db::FindDamage(*database, &damage).ok() && damage.IsSound());
  Require(damage.unreadable.empty());

  std::unique_ptr<jet::RecordSet> stations;
  Require(database->OpenTable(db::kStationsTable, &stations).ok());
  const int missing = static_cast<int>(report.missing.size());
  Require(report.stations + missing == report.labelCount);
  const auto hasDefault = [](int station) { return station <= db::kDefaultLabels; };
  const int filled = fill == db::Fill::Nothing
                         ? 0
                         : static_cast<int>(std::count_if(report.missing.begin(),
                                                          report.missing.end(), hasDefault));
  Require(stations->RecordCount() == report.stations + filled);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> bytes(data, data + std::min(size, kLargestFile));
  Salvage(bytes, db::Fill::Nothing);
  // So many records take their time: now and then is enough.
  if (bytes.empty() || bytes.back() % 16 == 1) Salvage(bytes, db::Fill::Defaults);
  return 0;
}
