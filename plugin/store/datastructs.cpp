#include "store/datastructs.h"

#include <cstring>
#include <utility>

#include "store/erException.h"

TequipRec::Tblock::Tblock() {
  static_assert(sizeof(Tblock) <= textFieldsSize + (fieldCount + 1) * sizeof(char*), "A full table must stay small");
  char* next = texts.data();
  for (std::size_t id = 0; id < index.size(); ++id) {
    index[id] = next;
    next += textFields[id].size;
  }
}

TequipRec::TequipRec() : block_(std::make_unique<Tblock>()) {}

TequipRec::TequipRec(const TequipRec& other) : TequipRec() {
  block_->texts = other.block_->texts;
  block_->testProc = other.block_->testProc;
}

TequipRec& TequipRec::operator=(const TequipRec& other) {
  if (this != &other) *this = TequipRec(other);
  return *this;
}

void TequipRec::clear() {
  block_->texts.fill('\0');
  block_->testProc = minTestProc;
}

bool TequipRec::setText(int fieldId, const char* text) {
  if (text == nullptr) return false;
  setText(fieldId, std::string_view(text));
  return true;
}

void TequipRec::setText(int fieldId, std::string_view text) {
  char* field = buffer(fieldId);
  const std::size_t size = textField(fieldId).size;
  const std::size_t length = text.copy(field, size - 1);
  std::memset(field + length, 0, size - length);
}

const char* TequipRec::text(int fieldId) const {
  return buffer(fieldId);
}

bool TequipRec::setTestProc(unsigned number) {
  if (number < minTestProc || number > maxTestProc) return false;
  block_->testProc = static_cast<std::uint16_t>(number);
  return true;
}

bool TequipRec::operator==(const TequipRec& other) const {
  return block_->testProc == other.block_->testProc && block_->texts == other.block_->texts;
}

char* TequipRec::buffer(int fieldId) const {
  if (fieldId < 0 || fieldId >= fieldCount) throw TERException(ERINVALIDFIELD, "Invalid field id");
  return block_->index[static_cast<std::size_t>(fieldId)];
}
