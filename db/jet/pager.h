// SPDX-License-Identifier: MIT
//
// The pages of a file in memory, and changes to them as a whole or not at all.

#ifndef DB_JET_PAGER_H_
#define DB_JET_PAGER_H_

#include <cassert>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "db/jet/bytes.h"
#include "db/jet/format.h"
#include "db/jet/page_file.h"
#include "db/jet/status.h"

namespace jet {

class PageEditor;

// Reads pages on demand and keeps them; hands out changes.  A page's bytes stay at one
// address as long as the pager lives.
class Pager {
 public:
  // `pageCount` whole pages of `file` count.
  Pager(std::unique_ptr<PageFile> file, const Format& format, std::uint32_t pageCount);
  Pager(const Pager&) = delete;
  Pager& operator=(const Pager&) = delete;

  const Format& GetFormat() const { return format_; }
  std::uint32_t PageCount() const { return pageCount_; }

  // The bytes of a page.  A page number past the end is Damaged: it can only come from
  // the file.
  Status Read(std::uint32_t page, const std::uint8_t** bytes) {
    if (page < pageCount_) {
      const std::uint8_t* chunk = chunks_[page / kChunkPages].get();
      if (chunk != nullptr) {
        *bytes = chunk + (page % kChunkPages) * format_.pageSize;
        return {};
      }
    }
    return Load(page, bytes);
  }

  // Grows with every change and with every change dropped.  What was derived from page bytes
  // holds as long as this number is the same.
  std::uint64_t Version() const { return version_; }
  // How many changes have been written to the file.
  std::uint64_t Written() const { return written_; }
  // Grows when a change is dropped.  What is kept beside the pages must then be read again.
  std::uint64_t Rollbacks() const { return rollbacks_; }

  // A page to be changed.  REQUIRES: a Change is open.
  Status Edit(std::uint32_t page, PageEditor* editor);
  // Has `action` called when what was done since is undone, in the order of undoing: the last
  // one first.  It must not touch the pages.  REQUIRES: a Change is open.
  void OnUndo(std::function<void()> action);
  // Adds a page of zeros at the end.  DiskFull when the format allows no more.
  // REQUIRES: a Change is open.
  Status Append(std::uint32_t* page);

  // Puts the file in order where a failed write has left it other than the pages in memory.
  // REQUIRES: no Change is open.
  Status Settle();

 private:
  friend class Change;
  friend class PageEditor;

  static constexpr std::uint32_t kChunkPages = 16;  // read in one go

  // What a range of a page held before it was changed.  For an appended page: length 0.  For an
  // action of OnUndo: page kNoPage.
  struct Undo {
    std::uint32_t page;
    std::uint32_t offset;
    std::uint32_t length;
  };

  Status Load(std::uint32_t page, const std::uint8_t** bytes);
  std::uint8_t* Writable(std::uint32_t page) const;
  void Remember(std::uint32_t page, std::uint32_t offset, std::uint32_t length);
  void RollBack(std::size_t undoCount);
  void ForgetUndoOfNewPages(std::size_t undoCount);
  Status WriteChange();
  void ForgetChange();
  Status CutFile();
  Status WritePages(const std::vector<std::uint32_t>& pages, std::size_t* tried);
  std::vector<std::uint32_t> PagesToWrite() const;

  std::unique_ptr<PageFile> file_;
  const Format& format_;
  std::uint32_t pageCount_;
  std::uint32_t writtenPageCount_;
  std::vector<std::unique_ptr<std::uint8_t[]>> chunks_;
  std::vector<std::uint8_t> isDirty_;  // by page
  std::vector<std::uint32_t> dirty_;
  std::vector<std::uint32_t> owed_;  // pages that differ in the file since a failed write
  bool isCutOwed_ = false;           // what it appended may still be in the file
  std::vector<Undo> undo_;
  Bytes undoBytes_;
  std::vector<std::function<void()>> undoActions_;
  int openChanges_ = 0;
  std::uint64_t version_ = 1;
  std::uint64_t written_ = 0;
  std::uint64_t rollbacks_ = 0;
};

// Changes a page and remembers what it held.  Offsets and lengths are the caller's to check.
class PageEditor {
 public:
  PageEditor() = default;

  std::uint32_t Page() const { return page_; }
  const std::uint8_t* Data() const { return data_; }

  // The range is about to be changed through the pointer.
  std::uint8_t* Range(std::uint32_t offset, std::uint32_t length) {
    pager_->Remember(page_, offset, length);
    return data_ + offset;
  }

  void PutU8(std::uint32_t offset, std::uint8_t value) { *Range(offset, 1) = value; }
  void PutU16(std::uint32_t offset, std::uint32_t value) { jet::PutU16(Range(offset, 2), value); }
  void PutU32(std::uint32_t offset, std::uint32_t value) { jet::PutU32(Range(offset, 4), value); }
  // Only what differs is touched.
  void Put(std::uint32_t offset, ByteView bytes);
  void Fill(std::uint32_t offset, std::uint32_t length, std::uint8_t value) {
    std::memset(Range(offset, length), value, length);
  }
  void Move(std::uint32_t to, std::uint32_t from, std::uint32_t length) {
    std::memmove(Range(to, length), data_ + from, length);
  }

 private:
  friend class Pager;
  PageEditor(Pager* pager, std::uint32_t page, std::uint8_t* data)
      : pager_(pager), page_(page), data_(data) {}

  Pager* pager_ = nullptr;
  std::uint32_t page_ = 0;
  std::uint8_t* data_ = nullptr;
};

// A scope in which pages change together.  Unless committed, everything done since its
// beginning is undone at its end.  Changes nest: only the outermost writes to the file.
class Change {
 public:
  explicit Change(Pager& pager);
  ~Change();
  Change(const Change&) = delete;
  Change& operator=(const Change&) = delete;

  // The outermost change writes its pages, definitions last.  When that fails, the pages in
  // memory are as before the change and the file is put back as far as it lets itself be
  // written; what could not be put back is written with the next change.
  Status Commit();

 private:
  Pager& pager_;
  const std::size_t undoCount_;
  bool open_ = true;
};

}  // namespace jet

#endif  // DB_JET_PAGER_H_
