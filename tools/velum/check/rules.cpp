#include "check/rules.h"

#include "check/file_rules.h"
#include "check/mandatory.h"
#include "check/type_rules.h"
#include "check/value_rules.h"
#include "model/objects.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <velum_types/types.h>

namespace velum::check {

namespace types = Zorvane::metamodel::types;
namespace foundation = Zorvane::metamodel::foundation;

namespace {

/// Visits every object once, and keeps those that rules over several objects ask for.
class Walk {
public:
    Walk(QOB::Model const& model, arxml::Sources const& sources)
        : model_(model), sources_(sources), initialValues_(initialValues(sources)) {
        for (InitialValue const& value : initialValues_) {
            byPath_.try_emplace(value.type);
            byPath_.try_emplace(value.constant);
        }
    }

    std::vector<Issue> run() {
        std::vector<std::pair<QOB::ClassObject, std::string>> pending;
        for (QOB::ClassObject const& free : model::freeObjects(model_)) {
            pending.emplace_back(free, "");
            while (!pending.empty()) {
                const auto [object, around] = pending.back();
                pending.pop_back();
                const std::string own = model::pathOf(object);
                std::string const& path = own.empty() ? around : own;
                visit(object, own, path);
                const auto contained = model::containedIn(object);
                for (auto part = contained.rbegin(); part != contained.rend(); ++part) {
                    pending.emplace_back(*part, path);
                }
            }
        }
        checkInitialValues();
        checkBaseTypes(sources_, issues_);
        return std::move(issues_);
    }

private:
    void visit(QOB::ClassObject const& object, std::string const& own, std::string const& path) {
        if (const auto wanted = byPath_.find(own); wanted != byPath_.end()) {
            wanted->second = object;
        }
        const std::size_t before = issues_.size();
        checkObject(object, sources_.elementAt(own), Sink(path, issues_));
        if (issues_.size() == before) {
            return;
        }
        if (const arxml::SourceElement element = sources_.elementAt(path)) {
            for (std::size_t i = before; i < issues_.size(); ++i) {
                issues_[i].place = element.origin();
            }
        }
    }

    static void
    checkObject(QOB::ClassObject const& object, arxml::SourceElement element, Sink const& sink) {
        checkMandatory(object, element, sink);
        if (const types::Real type(object); type.isValid()) {
            checkType(type, sink);
        } else if (const types::Unit unit(object); unit.isValid()) {
            checkUnit(unit, element, sink);
        } else if (const types::CompuMethod method(object); method.isValid()) {
            checkMethod(method, element, sink);
        } else if (const types::ApplicationValueSpecification value(object); value.isValid()) {
            checkValues(value, sink);
        }
    }

    void checkInitialValues() {
        for (InitialValue const& value : initialValues_) {
            const foundation::ValueType type(byPath_.at(value.type));
            const types::ConstantSpecification constant(byPath_.at(value.constant));
            if (!type.isValid() || !constant.isValid()) {
                continue;
            }
            const std::size_t before = issues_.size();
            checkAgainstType(constant.getConstantValue(), type, Sink(value.path, issues_));
            for (std::size_t i = before; i < issues_.size(); ++i) {
                issues_[i].place = value.place;
            }
        }
    }

    QOB::Model const& model_;
    arxml::Sources const& sources_;
    std::vector<InitialValue> initialValues_;
    std::unordered_map<std::string, QOB::ClassObject> byPath_; // of what these refer to
    std::vector<Issue> issues_;
};

bool standsBefore(Issue const& a, Issue const& b) {
    if (!a.place || !b.place) {
        return a.place.has_value() && !b.place;
    }
    return std::tie(a.place->file, a.place->position) < std::tie(b.place->file, b.place->position);
}

} // namespace

std::vector<Issue>
checkModel(QOB::Model const& model, arxml::Sources const& sources, report::Input const& input) {
    std::vector<Issue> issues = Walk(model, sources).run();
    for (Issue& issue : issues) {
        if (std::string const* const store = input.storeWith(issue.path);
            store != nullptr && !issue.place) {
            issue.place = {*store, {}};
        }
    }
    std::stable_sort(issues.begin(), issues.end(), standsBefore);
    return issues;
}

} // namespace velum::check
