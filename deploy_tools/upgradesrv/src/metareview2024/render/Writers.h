#pragma once

#include "metareview2024/render/Render.h"

/// One function and one file for each format; Formats.cpp has their names.
namespace metareview {

void WriteText(const SReview& review, const SRenderOptions& options, const Sink& sink);
void WriteJson(const SReview& review, const SRenderOptions& options, const Sink& sink);
void WriteNdjson(const SReview& review, const SRenderOptions& options, const Sink& sink);
void WriteCsv(const SReview& review, const SRenderOptions& options, const Sink& sink);
void WriteMarkdown(const SReview& review, const SRenderOptions& options, const Sink& sink);
void WriteHtml(const SReview& review, const SRenderOptions& options, const Sink& sink);
void WriteJunit(const SReview& review, const SRenderOptions& options, const Sink& sink);
void WriteSarif(const SReview& review, const SRenderOptions& options, const Sink& sink);
void WriteSql(const SReview& review, const SRenderOptions& options, const Sink& sink);

}  // namespace metareview
