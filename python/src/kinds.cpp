#include "kinds.h"

#include "text.h"

#include <map>
#include <vector>

namespace velum::python {

namespace {

struct Literal {
    std::string text;
    PyObject* member;
    QOB::Object box;
};

/// Never freed, like the members of its enum.
struct Kind {
    std::string name;
    py::handle type;
    std::vector<Literal> literals;
};

std::map<std::string, Kind const*>& kinds() {
    static auto& all = *new std::map<std::string, Kind const*>;
    return all;
}

Kind const& newKind(QOB::ImmutableEnumeration const& live, std::string const& dottedName) {
    auto& kind = *new Kind{.name = std::string(live.getName()), .type = {}, .literals = {}};
    py::list members;
    for (QOB::ImmutableEnumerationLiteral const literal : live.getOwnedLiterals()) {
        std::string const text(literal.getName());
        members.append(py::make_tuple(text, text));
        kind.literals.push_back({text, nullptr, {}});
    }
    py::object type = py::module_::import("enum").attr("Enum")(
        kind.name, members, py::arg("module") = "velum", py::arg("qualname") = kind.name);
    type.doc() = "The data type " + dottedName + ".";
    for (Literal& literal : kind.literals) {
        literal.member = py::object(type.attr(literal.text.c_str())).release().ptr();
        literal.box =
            QOB::ValueObjectFactory::createFromString(dottedName, QOB::String(literal.text));
    }
    kind.type = type.release();
    kinds().emplace(dottedName, &kind);
    return kind;
}

class KindConverter final : public Converter {
public:
    explicit KindConverter(Kind const& kind) : kind_(kind) {}

    PyObject* toPython(QOB::Object const& value, HoldRef const&) const override {
        if (value.get() == nullptr) {
            Py_RETURN_NONE;
        }
        QOB::String const text = value.toString();
        for (Literal const& literal : kind_.literals) {
            if (text.view() == literal.text) {
                return Py_NewRef(literal.member);
            }
        }
        raise(errorType, kind_.name + " has no literal for the value " + std::string(text) + ".");
    }
    QOB::Object fromPython(PyObject* value, std::string const& property) const override {
        for (Literal const& literal : kind_.literals) {
            if (value == literal.member) {
                return literal.box;
            }
        }
        refuse(value, property);
    }
    std::string typeName() const override { return "velum." + kind_.name; }

private:
    Kind const& kind_;
};

} // namespace

std::unique_ptr<Converter> kindConverter(QOB::ImmutableEnumeration const& live,
                                         std::string const& dottedName) {
    return std::make_unique<KindConverter>(newKind(live, dottedName));
}

void addKinds(py::module_& module) {
    for (auto const& [name, kind] : kinds()) {
        module.attr(kind->name.c_str()) = kind->type;
    }
}

} // namespace velum::python
