#pragma once

#include "qob/qob/nsinterface/namedelementintf.h"

#include <string>
#include <vector>

/// What this library tells the kernel: the kernel's functions for it, as the whole program calls
/// them, make a note of each call and hand on to the real ones.
namespace VelumTest {

struct Call {
    std::string function;
    std::string name; ///< as it was given: a dotted name, or a tag
    std::string detail;
    QOB::NSInterface::NamedElementIntf const* element; ///< that a tag was applied to
    bool inTransaction;                                ///< on the meta-registry
    bool withEmptyClipboard;
};

/// What was called since the last time. Calls that the kernel makes within another one, and those
/// of other packages, are left out.
std::vector<Call> takeCalls();

/// The dotted name of a class that the kernel fails to make from now on; null for none.
void failToCreate(char const* dottedName);

/// Lets a function raise when it is called with the name from now on; null for none.
void raiseIn(char const* function, char const* name);

} // namespace VelumTest
