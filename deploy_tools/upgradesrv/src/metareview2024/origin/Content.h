#pragma once

class CMetaBehavior2024;
class CMetaClass2024;
class CMetaMethod2024;
class CMetaProperty2024;

/// Whether two things of one name have the same content: the attributes other than internal_name, and for elements what
/// they list, whatever the order and the case of letters in names.
namespace metareview {

bool HaveSameContent(const CMetaClass2024& a, const CMetaClass2024& b);
bool HaveSameContent(const CMetaBehavior2024& a, const CMetaBehavior2024& b);
bool HaveSameContent(const CMetaMethod2024& a, const CMetaMethod2024& b);
bool HaveSameContent(const CMetaProperty2024& a, const CMetaProperty2024& b);

}  // namespace metareview
