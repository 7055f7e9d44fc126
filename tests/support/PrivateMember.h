#pragma once

namespace test {

/// Hands a private member of a class to its tests. Access is not checked for the names in an explicit instantiation:
///
///     struct SInit {                                                       // in namespace test, too
///       using Type = void (CCheckResultConverter::*)();
///       friend Type MemberOf(SInit);
///     };
///     template struct SPrivateMember<SInit, &CCheckResultConverter::Init>;
///
/// makes (converter.*MemberOf(SInit()))() a call of Init. It compiles only while Init is of this type.
template <typename Tag, typename Tag::Type Member>
struct SPrivateMember {
  friend typename Tag::Type MemberOf(Tag /*tag*/) { return Member; }
};

}  // namespace test
