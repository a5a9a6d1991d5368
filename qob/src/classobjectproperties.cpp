#include "qob/kernel/containers/sequence/sequence.h"
#include "qob/qob/nsinterface/classobjectintf.h"
#include "qob/qob/property.h"

namespace QOB::NSInterface {

namespace {

/// Properties have live elements, but those lead to no values yet.
[[noreturn]] void failUnbound() {
    AsserterEx<UnImplementedException>("Properties cannot be reached by their live elements yet.")
        .raise(__FILE__, __LINE__, "");
    std::terminate(); // not reached: that check has failed already
}

} // namespace

ImmutableSequence<Object> ClassObjectIntf::get(Deviant, ImmutableProperty const&) const {
    failUnbound();
}
ImmutableSequence<Object> ClassObjectIntf::get(Deviant, String) const {
    failUnbound();
}
Object ClassObjectIntf::getOne(Deviant, ImmutableProperty const&) const {
    failUnbound();
}
Object ClassObjectIntf::getOne(Deviant, String) const {
    failUnbound();
}
bool ClassObjectIntf::has(Deviant, ImmutableProperty const&) const {
    failUnbound();
}
bool ClassObjectIntf::has(Deviant, String) const {
    failUnbound();
}
void ClassObjectIntf::setOrAdd(Deviant, ImmutableProperty const&, Object) {
    failUnbound();
}
void ClassObjectIntf::setOrAdd(Deviant, String, Object) {
    failUnbound();
}
void ClassObjectIntf::setOrAddOnly(Deviant, ImmutableProperty const&, Object) {
    failUnbound();
}
void ClassObjectIntf::setOrAddOnly(Deviant, String, Object) {
    failUnbound();
}
void ClassObjectIntf::remove(Deviant, ImmutableProperty const&) {
    failUnbound();
}
void ClassObjectIntf::remove(Deviant, String) {
    failUnbound();
}
void ClassObjectIntf::remove(Deviant, ImmutableProperty const&, Object) {
    failUnbound();
}
void ClassObjectIntf::remove(Deviant, String, Object) {
    failUnbound();
}
void ClassObjectIntf::removeOnly(Deviant, ImmutableProperty const&, Object) {
    failUnbound();
}
void ClassObjectIntf::removeOnly(Deviant, String, Object) {
    failUnbound();
}
void ClassObjectIntf::removeOne(Deviant, ImmutableProperty const&) {
    failUnbound();
}
void ClassObjectIntf::removeOne(Deviant, String) {
    failUnbound();
}
void ClassObjectIntf::removeOneOnly(Deviant, ImmutableProperty const&) {
    failUnbound();
}
void ClassObjectIntf::removeOneOnly(Deviant, String) {
    failUnbound();
}

} // namespace QOB::NSInterface
