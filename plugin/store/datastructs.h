#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

/// The number of equipment records that the analyzer can hold, and so the most that New, Copy, an import and the record
/// files may bring into the table.
inline constexpr std::size_t equipRecLimit = 18432;

/// Field ids: the text fields of a record.
inline constexpr int fieldControlNum = 0;
inline constexpr int fieldDescription = 1;
inline constexpr int fieldManufacturer = 2;
inline constexpr int fieldModel = 3;
inline constexpr int fieldCustom1 = 4;
inline constexpr int fieldCustom2 = 5;
inline constexpr int fieldCustom3 = 6;
inline constexpr int fieldCount = 7;

/// Bytes of each text field's buffer by field id, the terminating zero included: a text is at most one byte shorter.
inline constexpr std::array<std::size_t, fieldCount> fieldSizes = {18, 64, 22, 22, 64, 64, 64};

inline constexpr unsigned minTestProc = 1;
inline constexpr unsigned maxTestProc = 500;

/// One piece of equipment that the analyzer tests: seven texts (Windows-1252, zero-terminated, zero-filled) and the
/// number of its test procedure.
///
/// All of it lies in one block that the record owns, so that a record costs one allocation and moves by a pointer. A
/// record that was moved from may only be assigned to or destroyed.
class TequipRec {
 public:
  /// A blank record: seven empty texts, test procedure 1.
  TequipRec();
  TequipRec(const TequipRec& other);
  TequipRec(TequipRec&&) noexcept = default;
  TequipRec& operator=(const TequipRec& other);
  TequipRec& operator=(TequipRec&&) noexcept = default;
  ~TequipRec() = default;

  /// Makes the record blank.
  void clear();

  /// Replaces a text, cut to the field's longest length (and at a zero byte). A null text changes nothing and returns
  /// false. Throws `TERException` with code 11 for a field id that is none.
  bool setText(int fieldId, const char* text);
  /// As above, for a text that is there and holds no zero byte.
  void setText(int fieldId, std::string_view text);

  /// The field's buffer. Throws `TERException` with code 11 for a field id that is none.
  const char* text(int fieldId) const;

  /// Takes a number from 1 to 500; any other changes nothing and returns false.
  bool setTestProc(unsigned number);
  unsigned testProc() const { return block_->testProc; }

 private:
  static constexpr std::size_t textSize = 18 + 64 + 22 + 22 + 64 + 64 + 64;

  /// The seven buffers, one after the other, and the index of pointers to them.
  struct Tblock {
    Tblock();
    Tblock(const Tblock&) = delete;
    Tblock& operator=(const Tblock&) = delete;

    std::array<char*, fieldCount> index;
    std::uint16_t testProc = minTestProc;
    std::array<char, textSize> texts{};
  };

  char* buffer(int fieldId) const;

  std::unique_ptr<Tblock> block_;
};

/// A record's position in the record table, from 0.
using TrecordIndex = std::uint32_t;

/// The ordered list of all records. Indices are stable between changes; the table itself knows no limit.
class TequipRecTable {
 public:
  std::size_t count() const { return records_.size(); }
  /// A number that is another one after each change, or chance of one, by any of the functions below.
  std::uint64_t revision() const { return revision_; }

  /// A record to be changed now: the reference is not for keeping.
  TequipRec& at(TrecordIndex index) { return ++revision_, records_[index]; }
  const TequipRec& at(TrecordIndex index) const { return records_[index]; }

  void append(TequipRec record) { ++revision_, records_.push_back(std::move(record)); }
  /// Removes one record; those behind it move up by one.
  void remove(TrecordIndex index) { ++revision_, records_.erase(records_.begin() + index); }
  /// Removes several records in one pass; `indices` must be ascending, each at most once.
  void remove(const std::vector<TrecordIndex>& indices);
  void removeAll() { ++revision_, records_.clear(); }
  /// Makes room for so many records in all.
  void reserve(std::size_t count) { records_.reserve(count); }

 private:
  std::vector<TequipRec> records_;
  std::uint64_t revision_ = 0;
};
