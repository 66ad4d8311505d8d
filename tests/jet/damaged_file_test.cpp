// SPDX-License-Identifier: MIT
//
// Files that are cut off or bear wrong bytes: never a crash, never a walk without end, always
// an error that says what and where.  TESK_SEED=n repeats a run.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/jet/exercise.h"
#include "tests/jet/jet_support.h"

namespace {

using test::Exercise;
using test::ReadEverything;
using Bytes = std::vector<std::uint8_t>;

void ExpectGoodErrors(const Exercise& exercise) {
  for (const jet::Status& status : exercise.errors) test::ExpectGoodError(status);
}

std::size_t PageSize(const Bytes& file) { return file[0x14] == 0 ? 2048 : 4096; }

class DamagedFileTest : public testing::TestWithParam<const char*> {
 protected:
  const Bytes file_ = test::SampleBytes(GetParam());
  const std::size_t pageSize_ = PageSize(file_);
};

TEST_P(DamagedFileTest, CutOffAtEachPage) {
  for (std::size_t size = 0; size < file_.size(); size += pageSize_) {
    SCOPED_TRACE(size / pageSize_);
    const Exercise exercise =
        ReadEverything({file_.begin(), file_.begin() + static_cast<long>(size)});
    ExpectGoodErrors(exercise);
    EXPECT_TRUE(!exercise.opened || size >= 4 * pageSize_);
    ASSERT_FALSE(HasFailure());
  }
}

TEST_P(DamagedFileTest, CutOffInsideAPage) {
  for (std::size_t size = 1; size < file_.size(); size += 7 * pageSize_ + 1021) {
    SCOPED_TRACE(size);
    Bytes cut(file_.begin(), file_.begin() + static_cast<long>(size));
    if (size % pageSize_ == 0) cut.pop_back();
    ExpectGoodErrors(ReadEverything(cut));
    const Bytes before = cut;
    const Exercise written = test::WriteEverywhere(&cut);
    ExpectGoodErrors(written);
    EXPECT_FALSE(written.errors.empty());
    EXPECT_EQ(cut, before) << "a file with a piece of a page is not written";
    ASSERT_FALSE(HasFailure());
  }
}

TEST_P(DamagedFileTest, BytesChangedAtRandom) {
  std::mt19937 random(test::Seed());
  for (int round = 0; round < test::Repeated(120); ++round) {
    Bytes damaged = file_;
    const int count = 1 + static_cast<int>(random() % 30);
    for (int i = 0; i < count; ++i) {
      // Most of what matters stands at the beginning and at the end of a page.
      const std::size_t page = random() % (file_.size() / pageSize_);
      const std::size_t where = random() % 3;
      const std::size_t within = where == 0   ? random() % 64
                                 : where == 1 ? pageSize_ - 1 - random() % 256
                                              : random() % pageSize_;
      damaged[page * pageSize_ + within] ^= static_cast<std::uint8_t>(1U << (random() % 8));
    }
    ExpectGoodErrors(ReadEverything(damaged));
    ExpectGoodErrors(test::WriteEverywhere(&damaged));
    ASSERT_FALSE(HasFailure()) << "round " << round;
  }
}

TEST_P(DamagedFileTest, EachPageReplacedByAnother) {
  const std::size_t pages = file_.size() / pageSize_;
  for (std::size_t page = 1; page < pages; page += 1 + pages / test::Repeated(60)) {
    SCOPED_TRACE(page);
    Bytes damaged = file_;
    const std::size_t other = (page * 7 + 3) % pages;
    std::copy_n(file_.begin() + static_cast<long>(other * pageSize_), pageSize_,
                damaged.begin() + static_cast<long>(page * pageSize_));
    ExpectGoodErrors(ReadEverything(damaged));
    ExpectGoodErrors(test::WriteEverywhere(&damaged));
    std::fill_n(damaged.begin() + static_cast<long>(page * pageSize_), pageSize_, 0xFF);
    ExpectGoodErrors(ReadEverything(damaged));
    ASSERT_FALSE(HasFailure());
  }
}

INSTANTIATE_TEST_SUITE_P(Samples, DamagedFileTest,
                         testing::Values("test2V1997", "indexTestV1997", "compIndexTestV2000",
                                         "test2V2000", "testIndexPropertiesV2000"),
                         [](const auto& sample) { return std::string(sample.param); });

class DamagedHeaderTest : public DamagedFileTest {};

TEST_P(DamagedHeaderTest, EveryByteFlipped) {
  const Exercise sound = ReadEverything(file_);
  EXPECT_TRUE(sound.errors.empty());
  int refused = 0;
  for (std::size_t at = 0; at < pageSize_; ++at) {
    Bytes damaged = file_;
    damaged[at] ^= 0xFF;
    SCOPED_TRACE(at);
    if (at < 0x98) {
      const Exercise exercise = ReadEverything(damaged);
      ExpectGoodErrors(exercise);
      if (!exercise.opened) ++refused;
      if (exercise.opened && at < 0x13) ADD_FAILURE() << "opened without its signature";
      ASSERT_FALSE(HasFailure());
    } else {
      // Nothing beyond is looked at.
      std::unique_ptr<jet::Database> database;
      EXPECT_THAT(jet::Database::Open(std::make_unique<jet::MemoryPageFile>(std::move(damaged)),
                                      jet::Access::ReadOnly, &database),
                  test::IsOk());
    }
  }
  EXPECT_GE(refused, 0x13 + 1 + 4) << "signature, version, encoding key";
}

INSTANTIATE_TEST_SUITE_P(Samples, DamagedHeaderTest,
                         testing::Values("indexTestV1997", "delTestV2000"),
                         [](const auto& sample) { return std::string(sample.param); });

}  // namespace
