#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

/// The number of equipment records that the analyzer can hold. New, Copy, an import and a load fill the table no
/// further.
inline constexpr std::size_t equipRecLimit = 18432;

/// Field ids: the text fields of a record, as positions in `textFields`.
inline constexpr int fieldControlNum = 0;
inline constexpr int fieldDescription = 1;
inline constexpr int fieldManufacturer = 2;
inline constexpr int fieldModel = 3;
inline constexpr int fieldCustom1 = 4;
inline constexpr int fieldCustom2 = 5;
inline constexpr int fieldCustom3 = 6;

/// When the grid shows a field's column.
enum class Tshown : std::uint8_t { always, atFirst, onDemand };

/// Everything that is particular to one text field of a record.
struct TtextField {
  int id;
  std::size_t size;        ///< bytes of its buffer, the terminating zero included: a text is at most one byte shorter
  const char* name;        ///< in names of controls ("chkModel", "txtModel"), and in upper case in settings ("MODEL")
  const char* heading;     ///< of its column; for a custom field the caption that it has until the user names it
  const char* importName;  ///< in names of the import's controls ("cbMake") and in its settings ("Make")
  const char* exportName;  ///< in the heading line of an export; the misspelling is part of that format
  int customNumber;        ///< 1, 2, ... for a custom field, whose caption is the user's; 0 for any other
  Tshown shown;
};

/// The shape of a record. Whatever depends on the text fields follows from this table: the size of a record, the lines
/// of the record files, the columns of grid, report and export, and the controls, settings and columns of an import.
inline constexpr auto textFields = std::to_array<TtextField>({
    {fieldControlNum, 18, "ControlNum", "Control Number", "DeviceID", "control nun", 0, Tshown::always},
    {fieldDescription, 64, "Description", "Description", "Desc", "description", 0, Tshown::atFirst},
    {fieldManufacturer, 22, "Manufacturer", "Manufacturer", "Make", "manufacturer", 0, Tshown::atFirst},
    {fieldModel, 22, "Model", "Model", "Model", "model", 0, Tshown::atFirst},
    {fieldCustom1, 64, "Custom1", "Custom 1", "Custom1", "custom1", 1, Tshown::onDemand},
    {fieldCustom2, 64, "Custom2", "Custom 2", "Custom2", "custom2", 2, Tshown::onDemand},
    {fieldCustom3, 64, "Custom3", "Custom 3", "Custom3", "custom3", 3, Tshown::onDemand},
});

inline constexpr int fieldCount = static_cast<int>(textFields.size());

/// Bytes of all fields' buffers together.
inline constexpr std::size_t textFieldsSize = [] {
  std::size_t sum = 0;
  for (const TtextField& field : textFields) sum += field.size;
  return sum;
}();

/// The number of custom fields, which have the highest field ids.
inline constexpr std::size_t customFieldCount = [] {
  std::size_t count = 0;
  for (const TtextField& field : textFields) count += field.customNumber > 0 ? 1 : 0;
  return count;
}();

static_assert(
    [] {
      for (int id = 0; id < fieldCount; ++id) {
        const TtextField& field = textFields.at(static_cast<std::size_t>(id));
        const int firstCustom = fieldCount - static_cast<int>(customFieldCount);
        const int customNumber = id < firstCustom ? 0 : id - firstCustom + 1;
        if (field.id != id || field.customNumber != customNumber || field.size < 2) return false;
      }
      return true;
    }(),
    "A field's id is its position in the table, and custom fields come last, numbered from 1");

/// The field of an id, which must be one from 0 to `fieldCount` - 1.
constexpr const TtextField& textField(int id) {
  return textFields.at(static_cast<std::size_t>(id));
}

inline constexpr unsigned minTestProc = 1;
inline constexpr unsigned maxTestProc = 500;

/// One piece of equipment that the analyzer tests: its texts (Windows-1252, zero-terminated, zero-filled) and the
/// number of its test procedure.
///
/// A record owns one block of memory, so it costs one allocation and moves by a pointer. A record that was moved from
/// may only be assigned to or destroyed.
class TequipRec {
 public:
  /// A blank record: empty texts, test procedure 1.
  TequipRec();
  TequipRec(const TequipRec& other);
  TequipRec(TequipRec&&) noexcept = default;
  TequipRec& operator=(const TequipRec& other);
  TequipRec& operator=(TequipRec&&) noexcept = default;
  ~TequipRec() = default;

  /// Makes the record blank.
  void clear();

  /// Replaces a text and cuts it to the field's longest length. A null text changes nothing and returns false. Throws
  /// `TERException` with code 11 if `fieldId` is no field id.
  bool setText(int fieldId, const char* text);
  /// As above. `text` must not hold a zero byte.
  void setText(int fieldId, std::string_view text);

  /// The field's buffer. Throws `TERException` with code 11 if `fieldId` is no field id.
  const char* text(int fieldId) const;

  /// Takes a number from 1 to 500; any other changes nothing and returns false.
  bool setTestProc(unsigned number);
  unsigned testProc() const { return block_->testProc; }

  /// Whether both hold the same texts and number.
  bool operator==(const TequipRec& other) const;

 private:
  /// The buffers, one after the other, and the index of pointers to them.
  struct Tblock {
    Tblock();
    Tblock(const Tblock&) = delete;
    Tblock& operator=(const Tblock&) = delete;

    std::array<char*, fieldCount> index;
    std::uint16_t testProc = minTestProc;
    std::array<char, textFieldsSize> texts{};
  };

  char* buffer(int fieldId) const;

  std::unique_ptr<Tblock> block_;
};

/// A record's position in the record table, from 0.
using TrecordIndex = std::uint32_t;

class TlistChange;

/// The ordered list of all records, read-only: `applyChange` (store/listChange.h) is the one way to change it. Indices
/// are stable between changes. The table itself enforces no limit.
class TequipRecTable {
 public:
  TequipRecTable() = default;
  explicit TequipRecTable(std::vector<TequipRec> records) : records_(std::move(records)), revision_(newRevision()) {}

  std::size_t count() const { return records_.size(); }
  const TequipRec& at(TrecordIndex index) const { return records_[index]; }

  /// Changes whenever the table may have changed. Only copies of a table have the same number.
  std::uint64_t revision() const { return revision_; }

 private:
  friend class TlistChange;

  static std::uint64_t newRevision() {
    static std::atomic<std::uint64_t> last = 0;
    return ++last;
  }

  std::vector<TequipRec> records_;
  std::uint64_t revision_ = newRevision();
};
