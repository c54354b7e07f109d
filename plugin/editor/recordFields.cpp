#include "editor/recordFields.h"

#include <string_view>

#include "support/recordText.h"

namespace {

constexpr std::array<int, fieldCount> storeOrder = {fieldDescription, fieldCustom1,      fieldCustom2, fieldCustom3,
                                                    fieldControlNum,  fieldManufacturer, fieldModel};

}  // namespace

TrecordFields TrecordFields::load(const TequipRec& record) {
  TrecordFields fields;
  for (int id = 0; id < fieldCount; ++id) fields.texts.at(static_cast<std::size_t>(id)) = record.text(id);
  return fields;
}

void TrecordFields::store(TequipRec& record) const {
  for (const int id : storeOrder) record.setText(id, trimmedText(texts.at(static_cast<std::size_t>(id))));
}

void TrecordFields::accept(TequipRec& record, std::optional<unsigned> testProc) const {
  for (int id = 0; id < fieldCount; ++id) record.setText(id, std::string_view(texts.at(static_cast<std::size_t>(id))));
  if (testProc) record.setTestProc(*testProc);
  store(record);
}
