#include "qob/kernel/containers/sequence/forwardingsequence.h"

namespace QOB {

using Generic::IteratorPtr;
using Generic::Ref;

void ForwardingSequence::checkInsertable(Deviant const& deviant, Ref const& element) const {
    checkInsertableInto(reading(deviant).get(), deviant, element);
}
Ref ForwardingSequence::generic_at(Deviant const& deviant, int index) const {
    return reading(deviant).generic_at(index);
}
Ref ForwardingSequence::generic_front(Deviant const& deviant) const {
    return reading(deviant).generic_front();
}
Ref ForwardingSequence::generic_back(Deviant const& deviant) const {
    return reading(deviant).generic_back();
}
IteratorPtr ForwardingSequence::generic_begin(Deviant const& deviant) const {
    return reading(deviant).generic_begin();
}
IteratorPtr ForwardingSequence::generic_end(Deviant const& deviant) const {
    return reading(deviant).generic_end();
}
void ForwardingSequence::generic_clear(Deviant const& deviant) {
    writing(deviant).generic_clear();
}
int ForwardingSequence::generic_size(Deviant const& deviant) const {
    return reading(deviant).generic_size();
}
bool ForwardingSequence::generic_empty(Deviant const& deviant) const {
    return reading(deviant).generic_empty();
}
IteratorPtr ForwardingSequence::generic_insert(Deviant const& deviant,
                                               IteratorIntf const* position,
                                               Ref element) {
    return writing(deviant).generic_insert(position, std::move(element));
}
void ForwardingSequence::generic_insert(Deviant const& deviant, int index, Ref element) {
    writing(deviant).generic_insert(index, std::move(element));
}
void ForwardingSequence::generic_erase(Deviant const& deviant, int index) {
    writing(deviant).generic_erase(index);
}
IteratorPtr ForwardingSequence::generic_erase(Deviant const& deviant,
                                              IteratorIntf const* first,
                                              IteratorIntf const* last) {
    return writing(deviant).generic_erase(first, last);
}
IteratorPtr ForwardingSequence::generic_erase(Deviant const& deviant,
                                              IteratorIntf const* position) {
    return writing(deviant).generic_erase(position);
}
void ForwardingSequence::generic_pop_back(Deviant const& deviant) {
    writing(deviant).generic_pop_back();
}
void ForwardingSequence::generic_pop_front(Deviant const& deviant) {
    writing(deviant).generic_pop_front();
}
void ForwardingSequence::generic_push_back(Deviant const& deviant, Ref element) {
    writing(deviant).generic_push_back(std::move(element));
}
void ForwardingSequence::generic_push_front(Deviant const& deviant, Ref element) {
    writing(deviant).generic_push_front(std::move(element));
}
void ForwardingSequence::generic_replace(Deviant const& deviant, int index, Ref element) {
    writing(deviant).generic_replace(index, std::move(element));
}
bool ForwardingSequence::generic_contains(Deviant const& deviant, Ref element) const {
    return reading(deviant).generic_contains(std::move(element));
}
char const* ForwardingSequence::generic_getLumvoName(bool immutableSequence,
                                                     bool immutableElements,
                                                     char const* fallback) const {
    return reading({}).generic_getLumvoName(immutableSequence, immutableElements, fallback);
}
int ForwardingSequence::generic_removeAll(Deviant const& deviant, Ref element) {
    return writing(deviant).generic_removeAll(std::move(element));
}

} // namespace QOB
