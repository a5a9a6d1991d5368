#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

/// The baseline of every ratio: what a careful programmer writes without a kernel. Objects with one
/// virtual getter and setter a property behind a counted one-word handle, lists of pointers, undo
/// and branches by copying an object's state at its first write.
namespace plain {

struct State {
    int number = 0;
    std::string text;
    class Object* link = nullptr;
};

/// Its operations are compiled apart, as a library's are: a user's compiler can't look into them.
class Object {
public:
    virtual ~Object();
    virtual int getNumber() const;
    virtual void setNumber(int value);

    int count = 0;
    State state;
};

class Handle {
public:
    Handle() = default;
    explicit Handle(Object* object) : object_(object) { retain(); }
    Handle(Handle const& other) : object_(other.object_) { retain(); }
    Handle(Handle&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Handle& operator=(Handle other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Handle() {
        if (object_ != nullptr && --object_->count == 0) {
            delete object_;
        }
    }
    Object* operator->() const { return object_; }
    Object* get() const { return object_; }

private:
    void retain() const {
        if (object_ != nullptr) {
            ++object_->count;
        }
    }
    Object* object_ = nullptr;
};

/// An integer type as a class of its own would hold it.
class IntegerType {
public:
    virtual ~IntegerType();
    virtual bool isSigned() const;
    virtual void setIsSigned(bool value);
    virtual std::string const& getName() const;
    virtual void setName(std::string value);

private:
    std::string name_;
    int length_ = 32;
    int lengthUnit_ = 0;
    bool isSigned_ = true;
};

/// A model: a list of objects, a journal of old states, and branches as maps of changed states.
class Model {
public:
    Handle create(int number) {
        Handle const object(new Object());
        object->setNumber(number);
        objects.push_back(object);
        return object;
    }

    /// Linear: the baseline has one list of pointers and nothing else.
    void destroy(Object* object) {
        for (auto position = objects.begin(); position != objects.end(); ++position) {
            if (position->get() == object) {
                objects.erase(position);
                return;
            }
        }
    }

    void setNumber(Handle const& object, int value) {
        if (object->getNumber() == value) {
            return;
        }
        if (recording && saved.try_emplace(object.get(), journal.size()).second) {
            journal.emplace_back(object, std::make_unique<State>(object->state));
        }
        object->setNumber(value);
    }

    void commit() {
        saved.clear();
        undo.push_back(std::move(journal));
        journal.clear();
    }
    void rollback() {
        saved.clear();
        swapStates(journal);
        journal.clear();
    }
    void swapStates(std::vector<std::pair<Handle, std::unique_ptr<State>>>& step) {
        for (auto& [object, state] : step) {
            std::swap(object->state, *state);
        }
    }

    bool recording = false;
    std::vector<Handle> objects;
    std::unordered_map<Object const*, std::size_t> saved;
    std::vector<std::pair<Handle, std::unique_ptr<State>>> journal;
    std::vector<std::vector<std::pair<Handle, std::unique_ptr<State>>>> undo;
};

/// One branch: the states that it has changed.
class Branch {
public:
    int getNumber(Handle const& object) const {
        auto const found = states.find(object.get());
        return found != states.end() ? found->second->number : object->getNumber();
    }
    void setNumber(Handle const& object, int value) {
        auto& state = states[object.get()];
        if (state == nullptr) {
            state = std::make_unique<State>(object->state);
        }
        state->number = value;
    }

    std::unordered_map<Object const*, std::unique_ptr<State>> states;
};

} // namespace plain
