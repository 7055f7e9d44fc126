#pragma once

#include <string>

#include "metareview2024/Finding.h"
#include "metareview2024/Review.h"

namespace test {

/// A finding under a rule, with that rule's risk, made by the customer and in the check's report.
metareview::SFinding Made(const std::string& path, metareview::EChange change, const std::string& rule,
                          metareview::EOrigin origin = metareview::EOrigin::kCustomer);

/// The same for an attribute that differs.
metareview::SFinding MadeChange(const std::string& path, const std::string& rule, const metareview::Value& client,
                                const metareview::Value& original,
                                metareview::EOrigin origin = metareview::EOrigin::kCustomer);

metareview::SFinding Counted(metareview::SFinding finding, std::uint64_t rows, std::uint64_t of,
                             const std::string& table = "T");
/// At least so many, because not everything could be counted.
metareview::SFinding CountedInPart(metareview::SFinding finding, std::uint64_t rows, std::uint64_t of,
                                   const std::string& problem);
metareview::SFinding NotCountable(metareview::SFinding finding, const std::string& problem);
metareview::SFinding Accepted(metareview::SFinding finding, const metareview::SAcceptance& acceptance);

/// A complete review of all kinds, of client.json, original.json and base.json, for the directory "upgrade".
metareview::SReview MadeReview(const std::vector<metareview::SFinding>& findings);

}  // namespace test
