#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

/// Finds texts that others own, each with a number. A hash table in one piece of memory, several times as fast as the
/// standard library's with its node for each entry.
class TtextIndex {
 public:
  static constexpr std::uint32_t none = 0xFFFFFFFF;

  /// For at most `most` different texts.
  explicit TtextIndex(std::size_t most) : slots_(std::bit_ceil(2 * most + 1)) {}

  /// Adds a text, which must outlive this object, unless it is there. Returns its number, and whether it was added.
  std::pair<std::uint32_t, bool> add(std::string_view text, std::uint32_t number) {
    Tslot& slot = slots_[place(text)];
    const bool isAdded = slot.number == none;
    if (isAdded) slot = {text, number};
    return {slot.number, isAdded};
  }

  /// The number of a text; `none` if it is not there.
  std::uint32_t find(std::string_view text) const { return slots_[place(text)].number; }

 private:
  struct Tslot {
    std::string_view text;
    std::uint32_t number = none;
  };

  /// The slot that holds the text, or that it would get.
  std::size_t place(std::string_view text) const {
    std::size_t slot = std::hash<std::string_view>()(text) & (slots_.size() - 1);
    while (slots_[slot].number != none && slots_[slot].text != text) slot = (slot + 1) & (slots_.size() - 1);
    return slot;
  }

  std::vector<Tslot> slots_;  ///< at most half full
};
