#pragma once

#include <array>
#include <cstddef>

#include "store/datastructs.h"

/// The fields that can be imported: a record's text fields by field id, then its test procedure number.
inline constexpr std::size_t importTestProc = textFields.size();
inline constexpr std::size_t importFieldCount = importTestProc + 1;

/// A field's name in the settings ("Desc") and in the names of its controls ("cbDesc", "EditDesc").
constexpr const char* importName(std::size_t field) {
  return field == importTestProc ? "TestProc" : textFields.at(field).importName;
}

/// The column of each field, counted from 1; 0: the field has none.
using TfieldColumns = std::array<int, importFieldCount>;
