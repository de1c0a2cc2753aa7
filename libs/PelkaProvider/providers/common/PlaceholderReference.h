// The References answer every association class of the module gives: no NAS
// is consulted; the source stands at its own end and the other end is a fixed
// placeholder path.
#ifndef ZEDA_PELKA_PLACEHOLDERREFERENCE_H
#define ZEDA_PELKA_PLACEHOLDERREFERENCE_H

#include <functional>
#include <string>

#include <cmpi/CmpiObjectPath.h>
#include <cmpi/CmpiResult.h>

namespace zeda::pelka {

// One end of an association as References sees it.
struct AssociationEnd {
  std::string role;       // reference property, e.g. "GroupComponent", "Antecedent"
  std::string className;  // class of a source standing at this end (compared exactly)
  // The path this end gets when the source stands at the other end.
  std::function<CmpiObjectPath(const std::string& nameSpace)> placeholder;
};

// For a source of `first.className`: the source at the first end, the second
// end's placeholder at the second; for a source of `second.className` the
// other way round. One instance of `associationClass` (first role set before
// second) goes to the result, then returnDone. Any other source class throws
// Exception "Unknown class name: <class>" (answered as 200).
void ReturnPlaceholderReference(CmpiResult& rslt, const CmpiObjectPath& source,
                                const std::string& associationClass, const AssociationEnd& first,
                                const AssociationEnd& second);

}  // namespace zeda::pelka

#endif
