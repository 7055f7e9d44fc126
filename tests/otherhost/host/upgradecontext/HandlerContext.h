#pragma once

class CHandlerContext {
 public:
  CHandlerContext() = default;
  CHandlerContext(const CHandlerContext&) = delete;
  CHandlerContext& operator=(const CHandlerContext&) = delete;
};
