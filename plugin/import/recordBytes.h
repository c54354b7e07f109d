#pragma once

#include <cstdint>
#include <deque>
#include <string>

/// A character that became a base letter or a question mark, and where this stands in the text.
struct Treplacement {
  std::uint64_t position = 0;
  char32_t character = 0;
};

/// Whether a character neither changes nor combines with the one before it when a text is composed (NFC).
bool isInert(char32_t character);

/// The letter of Windows-1252 that a character becomes which Windows-1252 lacks: without its accent, stroke or hook.
/// A question mark where it has none.
char baseLetter(char32_t character);

/// Appends `segment` to `bytes`, composed (NFC) and in Windows-1252. `segment` holds one character and those behind it
/// that are not inert. Adds what Windows-1252 lacks to `replaced`; `position` is the position of `bytes`.
void appendSegment(const std::u32string& segment, std::string& bytes, std::uint64_t position,
                   std::deque<Treplacement>& replaced);
