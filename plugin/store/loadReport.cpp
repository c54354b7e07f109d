#include "store/loadReport.h"

namespace {

constexpr const char* unidentified = "An unidentified error occurred while\nloading the equipment records";

}  // namespace

std::optional<TmessageText> loadMessage(TERStatus status) {
  switch (status) {
    case ERSUCCESS:
    case ERSUCCESSTOO:
      return std::nullopt;
    case EREXCEPTION:
      return TmessageText{unidentified, "EREXCEPTION", TmessageIcon::error};
    case ER1STFILENOTFOUND:
      return TmessageText{"The equipment record data file could not be found.\nEquipment records were not loaded",
                          "ER1STFILENOTFOUND", TmessageIcon::error};
    case ER2NDFILENOTFOUND:
      return TmessageText{
          "The equipment record information file could not be found.\nEquipment records were not loaded",
          "ER2NDFILENOTFOUND", TmessageIcon::error};
    case ERINVALIDINPUT:
      return TmessageText{"Invalid parameters passed to TequipRecFromFile()\nEquipment records were not loaded",
                          "ERINVALIDINPUT", TmessageIcon::error};
    case ERDATAOVERFLOW:
      return TmessageText{
          "More than 18432 records were found.\n\nThe analyzer can only accept 18432\nEquipment Records at a time.\n\n"
          "Only the first 18432 records were loaded.\nAll other records were ignored.",
          "ERDATAOVERFLOW", TmessageIcon::information};
    case ERINVALIDRECORDS:
      return TmessageText{
          "One or more corrupt records were found.\nThe corrupt records were not loaded.\n\n"
          "If this error persists after restart, please\ncontact your system vendor.",
          "ERINVALIDRECORDS", TmessageIcon::information};
    default:
      return TmessageText{unidentified, "Unknown", TmessageIcon::error};
  }
}

std::optional<TmessageText> saveMessage(TERStatus status) {
  if (status != ERDATAOVERFLOW) return loadMessage(status);
  return TmessageText{
      "More than 18432 records were found.\n\nThe analyzer can only handle 18432\nEquipment Records at a time.\n\n"
      "Only the first 18432 records were loaded.\nAll other records were ignored.",
      "ERDATAOVERFLOW", TmessageIcon::information};
}

TmessageText exceptionMessage(TERStatus code) {
  switch (code) {
    case EREXCEPTION:
      return {unidentified, "General EREXCEPTION", TmessageIcon::error};
    case ER1STFILENOTFOUND:
    case ER2NDFILENOTFOUND:
      return {"Data files not found.", "File Not Found Exception", TmessageIcon::error};
    case ERINVALIDINPUT:
      return {"Invalid input", "Invalid Input Exception", TmessageIcon::error};
    case ERDATAOVERFLOW:
      return {"Data record overflow", "Overflow Exception", TmessageIcon::error};
    case ERINVALIDRECORDS:
      return {"Invalid Records Found", "Invalid Records Exception", TmessageIcon::error};
    default:
      return {unidentified, "Unknown Exception", TmessageIcon::error};
  }
}

std::string joinDetails(std::size_t fieldsInBoth, const std::string& kept) {
  if (fieldsInBoth == 0) return {};
  const std::string beginning =
      fieldsInBoth == 1 ? "1 field was changed by both. Your entry was saved; the other one is kept in "
                        : std::to_string(fieldsInBoth) +
                              " fields were changed by both. Your entries were saved; the other ones are kept in ";
  return beginning + kept + '.';
}

std::string notJoinedDetails(bool readable, const std::string& kept) {
  const std::string beginning =
      readable ? "Both lists together have more than 18432 records. The other program's list is kept in "
               : "The other program's list has errors. It is kept in ";
  return beginning + kept + '.';
}
