#pragma once

#include "qob/qob/deviant.h"
#include "qob/qob/integer.h"

#include <cstddef>
#include <exception>
#include <memory>
#include <vector>

namespace QOB {

class Attributes;
class Changes;
class ClassObject;
class Observer;
struct Attribute;

namespace NSInterface {
class ClassObjectIntf;
} // namespace NSInterface

namespace internal {

class DeviantData;
struct SavedState;

/// The observers of one deviant, in order of their registration.
class ObserverList {
public:
    explicit ObserverList(DeviantData& deviant) noexcept;
    ObserverList(ObserverList const&) = delete;
    ObserverList& operator=(ObserverList const&) = delete;
    ~ObserverList();

    bool empty() const noexcept { return count_ == 0; }
    void add(Observer& observer);
    void remove(Observer& observer) noexcept;
    /// Goes on with the others when one raises; keeps the first exception.
    void tell(Changes const& changes, std::exception_ptr& raised);
    /// The deviant has gone.
    void end() noexcept;
    /// The stored properties of the objects of a class.
    std::vector<Attribute> const& attributesOf(ClassObject const& object);

private:
    void noteCount(std::size_t count) noexcept;

    DeviantData* deviant_;
    std::vector<Observer*> observers_; ///< null where one has gone while others were told
    std::size_t count_ = 0;
    int tellings_ = 0;
    std::unique_ptr<Attributes> attributes_;
    unsigned generation_ = 0; ///< of the classes that the attributes are of
};

/// Tells the observers of the deviant, and of the branches that read in it, what is different from
/// the old states. Returns what the first of them raised.
std::exception_ptr tellObservers(DeviantData& deviant, std::vector<SavedState> const& before);
/// Tells the observers of all deviants that show the object that it had another id. Raises what
/// they raise.
void tellObserversOfId(DeviantData& root, NSInterface::ClassObjectIntf* object, Integer before);

/// A deviant has a record of a write, for the end of which it waits.
void noteWrite(DeviantData& deviant);
void forgetWrite(DeviantData& deviant) noexcept;

/// What is written while it exists isn't recorded for observers.
class WithoutObservers {
public:
    explicit WithoutObservers(Deviant deviant);
    WithoutObservers(WithoutObservers const&) = delete;
    WithoutObservers& operator=(WithoutObservers const&) = delete;
    ~WithoutObservers();

private:
    DeviantData* deviant_ = nullptr;
};

} // namespace internal
} // namespace QOB
