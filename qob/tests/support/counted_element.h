#pragma once

#include "qob/qob/nsinterface/classobjectintf.h"

#include <string>

/// An object that belongs to no model: it is counted in place and lives where it was made.
class CountedElement final : public QOB::NSInterface::ClassObjectIntf {
public:
    CountedElement() { countInPlace(); }

    void incRef() const override { ++referenceCount_; }
    void decRef() const override { --referenceCount_; }
    int numRef() const override { return referenceCount_; }
    bool deviant_isValid(QOB::Deviant) const override { return true; }
};

/// One whose counting can be watched: each call is noted, with the object's name.
class WatchedElement final : public QOB::NSInterface::ClassObjectIntf {
public:
    WatchedElement(char name, std::string& log) : name_(name), log_(&log) {}

    void incRef() const override {
        ++referenceCount_;
        (*log_ += '+') += name_;
    }
    void decRef() const override {
        --referenceCount_;
        (*log_ += '-') += name_;
    }
    int numRef() const override { return referenceCount_; }
    bool deviant_isValid(QOB::Deviant) const override { return true; }

private:
    char name_;
    std::string* log_;
};
