#pragma once

#include <any>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/// The baseline for metaclasses: a type of ten properties with virtual access to its state behind a
/// counted handle, a method that lists its types, undo and branches by copies of the state.
namespace plain {

struct Method;

struct TypeState {
    std::string name;
    int visibility = 0;
    int length = 32;
    int lengthUnit = 0;
    double minimum = 0;
    double maximum = 0;
    bool isSigned = true;
    bool isMinimumOpen = true;
    bool isMaximumOpen = true;
    bool isApplication = false;
    Method* method = nullptr;
};

/// Its operations are compiled apart, as a library's are.
class Type {
public:
    virtual ~Type();
    virtual bool isSigned() const;
    virtual void setSigned(bool value);
    virtual void setName(std::string const& value);
    virtual void setVisibility(int value);
    virtual void setLength(int value, int unit);
    virtual void setMinimum(double value);
    virtual void setMaximum(double value);
    virtual void setMinimumOpen(bool value);
    virtual void setMaximumOpen(bool value);
    virtual void setApplication(bool value);

    /// The properties by number, in the order of the state, from 1. An empty any, and nothing, for
    /// a number that none has.
    virtual std::any get(unsigned id) const;
    virtual void set(unsigned id, std::any const& value);
    /// The same by name; 0 for a name that none has.
    static unsigned idOf(std::string_view name);

    int count = 0;
    TypeState state;
};

class TypeHandle {
public:
    TypeHandle() = default;
    explicit TypeHandle(Type* type) : type_(type) { ++type_->count; }
    TypeHandle(TypeHandle const& other) : type_(other.type_) {
        if (type_ != nullptr) {
            ++type_->count;
        }
    }
    TypeHandle(TypeHandle&& other) noexcept : type_(std::exchange(other.type_, nullptr)) {}
    TypeHandle& operator=(TypeHandle other) noexcept {
        std::swap(type_, other.type_);
        return *this;
    }
    ~TypeHandle() {
        if (type_ != nullptr && --type_->count == 0) {
            delete type_;
        }
    }
    Type* operator->() const { return type_; }
    Type* get() const { return type_; }

private:
    Type* type_ = nullptr;
};

TypeHandle makeType(std::string name);

/// The other end of a type's method.
struct Method {
    std::vector<Type*> types;
};

/// Keeps both ends; the old method's list is searched.
void setMethod(TypeHandle const& type, Method* method);

/// What one transaction changed: the states from before.
class Journal {
public:
    /// Copies the state at its first change.
    void save(TypeHandle const& type);
    /// Undo and redo.
    void exchange();

private:
    std::unordered_map<Type const*, std::size_t> known_;
    std::vector<std::pair<TypeHandle, std::unique_ptr<TypeState>>> saved_;
};

class TypeBranch {
public:
    /// Copies the state at its first change.
    TypeState& stateOf(TypeHandle const& type);

private:
    std::unordered_map<Type const*, std::unique_ptr<TypeState>> states_;
};

} // namespace plain
