#include "kvxsptlog/LogDestination.h"

CLogDestination::CLogDestination() = default;

CLogDestination::~CLogDestination() = default;
