#pragma once

#include <log4cplus/layout.h>

/// "LEVEL file:line function - message" and a line end; nothing in the event can begin a second line.
class COneLineLayout : public log4cplus::Layout {
 public:
  COneLineLayout();
  ~COneLineLayout() override;

  void formatAndAppend(log4cplus::tostream& output, const log4cplus::spi::InternalLoggingEvent& event) override;
};
