#include "print/paper.h"

#include <algorithm>
#include <array>

namespace {

/// Where Letter is usual. Source: the Unicode consortium's table of measurement data.
constexpr std::array letterTerritories = {
    QLocale::Belize,      QLocale::Canada,     QLocale::Chile,        QLocale::Colombia,  QLocale::CostaRica,
    QLocale::ElSalvador,  QLocale::Guatemala,  QLocale::Mexico,       QLocale::Nicaragua, QLocale::Panama,
    QLocale::Philippines, QLocale::PuertoRico, QLocale::UnitedStates, QLocale::Venezuela};

}  // namespace

QPageSize usualPaper(const QLocale& locale) {
  const auto* const end = letterTerritories.end();
  const bool isLetter = std::find(letterTerritories.begin(), end, locale.territory()) != end;
  return {isLetter ? QPageSize::Letter : QPageSize::A4};
}

std::string paperKey(const QPageSize& paper) {
  return paper.id() == QPageSize::Custom ? std::string() : QPageSize::key(paper.id()).toStdString();
}

QPageSize paperOfKey(const std::string& key) {
  for (int id = 0; id <= QPageSize::LastPageSize; ++id) {
    const QPageSize paper(static_cast<QPageSize::PageSizeId>(id));
    if (!key.empty() && paperKey(paper) == key) return paper;
  }
  return usualPaper();
}
