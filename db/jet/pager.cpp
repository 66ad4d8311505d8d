// SPDX-License-Identifier: MIT

#include "db/jet/pager.h"

#include <algorithm>
#include <string>

namespace jet {

Pager::Pager(std::unique_ptr<PageFile> file, const Format& format, std::uint32_t pageCount)
    : file_(std::move(file)),
      format_(format),
      pageCount_(pageCount),
      writtenPageCount_(pageCount),
      chunks_((pageCount + kChunkPages - 1) / kChunkPages),
      isDirty_(pageCount) {}

Status Pager::Load(std::uint32_t page, const std::uint8_t** bytes) {
  if (page >= pageCount_) {
    return Status(ErrorNumber::Damaged,
                  "The file points past its end: it has " + std::to_string(pageCount_) + " pages",
                  page);
  }
  const std::uint32_t first = page / kChunkPages * kChunkPages;
  const std::uint32_t count = std::min(kChunkPages, pageCount_ - first);
  auto chunk = std::make_unique_for_overwrite<std::uint8_t[]>(kChunkPages * format_.pageSize);
  const std::uint64_t offset = std::uint64_t{first} * format_.pageSize;
  Status status = file_->Read(offset, {chunk.get(), count * format_.pageSize});
  if (!status.ok()) return Status(status.Error(), status.Text(), page);
  *bytes = chunk.get() + (page - first) * format_.pageSize;
  chunks_[page / kChunkPages] = std::move(chunk);
  return {};
}

std::uint8_t* Pager::Writable(std::uint32_t page) const {
  return chunks_[page / kChunkPages].get() + (page % kChunkPages) * format_.pageSize;
}

void Pager::Remember(std::uint32_t page, std::uint32_t offset, std::uint32_t length) {
  assert(openChanges_ > 0 && offset + length <= format_.pageSize);
  if (length == 0) return;
  const std::uint8_t* bytes = Writable(page) + offset;
  undoBytes_.insert(undoBytes_.end(), bytes, bytes + length);
  undo_.push_back({page, offset, length});
  if (isDirty_[page] == 0) {
    isDirty_[page] = 1;
    dirty_.push_back(page);
  }
}

Status Pager::Edit(std::uint32_t page, PageEditor* editor) {
  assert(openChanges_ > 0);
  const std::uint8_t* bytes = nullptr;
  Status status = Read(page, &bytes);
  if (!status.ok()) return status;
  *editor = PageEditor(this, page, Writable(page));
  return {};
}

void Pager::OnUndo(std::function<void()> action) {
  assert(openChanges_ > 0);
  undoActions_.push_back(std::move(action));
  undo_.push_back({kNoPage, 0, 0});
}

Status Pager::Append(std::uint32_t* page) {
  assert(openChanges_ > 0);
  if ((std::uint64_t{pageCount_} + 1) * format_.pageSize > format_.maxFileSize) {
    return Status(ErrorNumber::DiskFull, "The database has reached its largest size");
  }
  if (pageCount_ % kChunkPages == 0) {
    chunks_.push_back(
        std::make_unique_for_overwrite<std::uint8_t[]>(kChunkPages * format_.pageSize));
  } else {
    const std::uint8_t* bytes = nullptr;  // the chunk of the new page must be in memory
    Status status = Read(pageCount_ - 1, &bytes);
    if (!status.ok()) return status;
  }
  *page = pageCount_++;
  std::memset(Writable(*page), 0, format_.pageSize);
  undo_.push_back({*page, 0, 0});
  isDirty_.push_back(1);
  dirty_.push_back(*page);
  return {};
}

void Pager::RollBack(std::size_t undoCount) {
  while (undo_.size() > undoCount) {
    const Undo& undo = undo_.back();
    if (undo.page == kNoPage) {
      undoActions_.back()();
      undoActions_.pop_back();
    } else if (undo.length == 0) {
      pageCount_ = undo.page;
      chunks_.resize((pageCount_ + kChunkPages - 1) / kChunkPages);
      isDirty_.resize(pageCount_);
    } else {
      const std::size_t kept = undoBytes_.size() - undo.length;
      std::memcpy(Writable(undo.page) + undo.offset, undoBytes_.data() + kept, undo.length);
      undoBytes_.resize(kept);
    }
    undo_.pop_back();
  }
  ++version_;
  ++rollbacks_;
}

// What pages held that were appended since the outermost change began is not needed once the
// changes within it are over: undone, that change drops the pages.
void Pager::ForgetUndoOfNewPages(std::size_t undoCount) {
  std::size_t bytesKept = undoBytes_.size();
  for (std::size_t i = undoCount; i < undo_.size(); ++i) bytesKept -= undo_[i].length;
  std::size_t from = bytesKept;
  std::size_t kept = undoCount;
  for (std::size_t i = undoCount; i < undo_.size(); ++i) {
    const Undo undo = undo_[i];
    if (undo.length == 0 || undo.page < writtenPageCount_) {
      std::memmove(undoBytes_.data() + bytesKept, undoBytes_.data() + from, undo.length);
      bytesKept += undo.length;
      undo_[kept++] = undo;
    }
    from += undo.length;
  }
  undo_.resize(kept);
  undoBytes_.resize(bytesKept);
}

std::vector<std::uint32_t> Pager::PagesToWrite() const {
  std::vector<std::uint32_t> pages = owed_;
  for (const std::uint32_t page : dirty_) {
    if (page < pageCount_) pages.push_back(page);  // not one that was appended and dropped
  }
  if (pages.size() < 2) return pages;
  std::sort(pages.begin(), pages.end());
  pages.erase(std::unique(pages.begin(), pages.end()), pages.end());
  std::stable_partition(pages.begin(), pages.end(), [this](std::uint32_t page) {
    return page >= writtenPageCount_ || Writable(page)[0] != kDefinitionPage;
  });
  return pages;
}

// Writes runs of neighbouring pages at once.  *tried counts the pages of which something may
// have reached the file.
Status Pager::WritePages(const std::vector<std::uint32_t>& pages, std::size_t* tried) {
  for (std::size_t begin = 0; begin < pages.size(); begin = *tried) {
    std::size_t end = begin + 1;
    while (end < pages.size() && pages[end] == pages[end - 1] + 1 &&
           pages[end] % kChunkPages != 0) {
      ++end;
    }
    *tried = end;
    const std::uint64_t offset = std::uint64_t{pages[begin]} * format_.pageSize;
    Status status =
        file_->Write(offset, {Writable(pages[begin]), (end - begin) * format_.pageSize});
    if (!status.ok()) return Status(status.Error(), status.Text(), pages[begin]);
  }
  return {};
}

// Takes away what a failed write may have left behind the last page.  Half a page there, and the
// file could only be read when it is opened again.
Status Pager::CutFile() {
  Status status = file_->Truncate(std::uint64_t{pageCount_} * format_.pageSize);
  isCutOwed_ = !status.ok();
  return status;
}

Status Pager::Settle() {
  assert(openChanges_ == 0);
  std::size_t tried = 0;
  Status status = WritePages(owed_, &tried);
  if (status.ok()) owed_.clear();
  if (status.ok() && isCutOwed_) status = CutFile();
  return status;
}

void Pager::ForgetChange() {
  for (const std::uint32_t page : dirty_) {
    if (page < pageCount_) isDirty_[page] = 0;
  }
  dirty_.clear();
  undo_.clear();
  undoBytes_.clear();
  undoActions_.clear();
}

Status Pager::WriteChange() {
  std::vector<std::uint32_t> pages = PagesToWrite();
  std::size_t tried = 0;
  Status status = WritePages(pages, &tried);
  if (status.ok() && isCutOwed_) status = CutFile();
  if (status.ok()) {
    if (!dirty_.empty()) ++written_;
    writtenPageCount_ = pageCount_;
    owed_.clear();
  } else {
    const bool grew = pageCount_ > writtenPageCount_;
    RollBack(0);
    pages.resize(tried);
    std::erase_if(pages, [this](std::uint32_t page) { return page >= pageCount_; });
    Status back;
    if (grew) back = CutFile();
    std::size_t restored = 0;
    const Status rewritten = WritePages(pages, &restored);
    if (!rewritten.ok()) owed_.insert(owed_.end(), pages.begin(), pages.end());
    if (!back.ok() || !rewritten.ok()) {
      status = Status(status.Error(), status.Text() + ", nor could the pages before it be restored",
                      status.Page());
    }
  }
  ForgetChange();
  return status;
}

void PageEditor::Put(std::uint32_t offset, ByteView bytes) {
  std::uint32_t begin = 0;
  std::uint32_t end = static_cast<std::uint32_t>(bytes.size());
  const std::uint8_t* old = data_ + offset;
  while (begin < end && old[begin] == bytes[begin]) ++begin;
  while (end > begin && old[end - 1] == bytes[end - 1]) --end;
  if (begin < end) std::memcpy(Range(offset + begin, end - begin), &bytes[begin], end - begin);
}

Change::Change(Pager& pager) : pager_(pager), undoCount_(pager.undo_.size()) {
  ++pager_.openChanges_;
  ++pager_.version_;
}

Change::~Change() {
  if (!open_) return;
  pager_.RollBack(undoCount_);
  if (--pager_.openChanges_ == 0) pager_.ForgetChange();
}

Status Change::Commit() {
  open_ = false;
  ++pager_.version_;
  if (--pager_.openChanges_ == 0) return pager_.WriteChange();
  if (pager_.openChanges_ == 1) pager_.ForgetUndoOfNewPages(undoCount_);
  return {};
}

}  // namespace jet
