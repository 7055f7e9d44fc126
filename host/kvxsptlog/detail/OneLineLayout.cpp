#include "kvxsptlog/detail/OneLineLayout.h"

#include <log4cplus/spi/loggingevent.h>

#include <ostream>

#include "kvxsptstring/StringHelper.h"

COneLineLayout::COneLineLayout() = default;

COneLineLayout::~COneLineLayout() = default;

void COneLineLayout::formatAndAppend(log4cplus::tostream& output, const log4cplus::spi::InternalLoggingEvent& event) {
  output << llmCache.toString(event.getLogLevel()) << ' ' << CStringHelper::ToVisible(event.getFile()) << ':'
         << event.getLine() << ' ' << CStringHelper::ToVisible(event.getFunction()) << " - "
         << CStringHelper::ToVisible(event.getMessage()) << '\n';
}
