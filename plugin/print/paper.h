#pragma once

#include <QLocale>
#include <QPageSize>
#include <string>

/// The paper that is usual in the locale's territory: Letter in the United States and some other countries, elsewhere
/// A4. Units do not decide it: Britain measures in miles and prints on A4.
QPageSize usualPaper(const QLocale& locale = QLocale());

/// The name under which the settings keep a paper, such as "A4"; empty for a size without a name.
std::string paperKey(const QPageSize& paper);

/// The paper with this key; the usual paper if there is none.
QPageSize paperOfKey(const std::string& key);
