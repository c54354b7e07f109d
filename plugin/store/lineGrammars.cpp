// The grammars of the two record files, in one translation unit because the parser framework compiles slowly.
#include "store/lineGrammars.h"

#include <boost/spirit/home/x3.hpp>

#include "store/recordLines.h"

namespace {

namespace x3 = boost::spirit::x3;

using Titerator = std::string_view::const_iterator;

const auto space = x3::char_(" \t\r\n\v\f");
const auto quoted = x3::lexeme['"' >> x3::raw[*(x3::char_ - (x3::lit('"') | '\0'))] >> '"'];

std::string_view textOf(const boost::iterator_range<Titerator>& range) {
  return {range.begin(), range.end()};
}

}  // namespace

bool parseDataLine(std::string_view line, _EQDAT& entry) {
  const auto takeControlNum = [&entry](const auto& context) { entry.controlNum = textOf(x3::_attr(context)); };
  const auto takeTestProc = [&entry](const auto& context) { entry.testProc = x3::_attr(context); };
  Titerator begin = line.begin();
  return x3::phrase_parse(begin, line.end(), quoted[takeControlNum] >> ',' >> x3::uint32[takeTestProc] >> x3::eoi,
                          space);
}

bool parseInfoLine(std::string_view line, _EQINFO& entry) {
  std::size_t taken = 0;
  const auto take = [&](const auto& context) {
    if (taken < entry.texts.size()) entry.texts[taken] = textOf(x3::_attr(context));
    ++taken;
  };
  Titerator begin = line.begin();
  return x3::phrase_parse(begin, line.end(), quoted[take] % ',' >> x3::eoi, space) && taken == entry.texts.size();
}
