#pragma once

#include <QByteArray>
#include <filesystem>
#include <optional>
#include <utility>

#include "store/equipRecFiles.h"
#include "store/joinLists.h"
#include "tools/recordChanges.h"

/// A list that a program has open, without a window: the records, and their files in `folder`. Unsaved changes are kept
/// in `folder`/program.
class TopenList final : public TlistOwner {
 public:
  explicit TopenList(const std::filesystem::path& folder, TfileSystem& files = diskFileSystem())
      : files_({folder, {folder / "program"}}, files) {}

  /// Both return the caption of the message that is to be shown, if any.
  QByteArray load() {
    const auto message = files_.load(table_);
    counts_ = TrecordCounts(table_);
    return message ? message->caption : "";
  }
  QByteArray save() {
    report = files_.save(table_);
    if (report.joined) {
      table_ = std::move(*report.joined);
      counts_ = TrecordCounts(table_);
    }
    return report.message ? report.message->caption : "";
  }

  const TequipRecTable& records() const override { return table_; }
  void change(TlistChange change) override { files_.unsaved().add(made(std::move(change))); }
  void add(TequipRec record) { change(TlistChange::append(table_.count(), {std::move(record)})); }

  /// The changes that a killed program left, and how they are taken back.
  TlistEdits findUnsaved() { return files_.findUnsaved(table_); }
  void restore(const TlistEdits& unsaved) { unsavedChanges().adopt(made(joinLists(table_, unsaved).change)); }
  TunsavedChanges& unsavedChanges() { return files_.unsaved(); }

  TsaveReport report;  ///< of the last save

 private:
  TlistEdits made(TlistChange change) {
    TlistEdits edits;
    applyChange(table_, std::move(change), [&](const TlistStep& step) {
      for (TlistEdit& edit : editsOf(step, table_, counts_)) edits.push_back(std::move(edit));
    });
    return edits;
  }

  TequipRecFiles files_;
  TequipRecTable table_;
  TrecordCounts counts_;
};
