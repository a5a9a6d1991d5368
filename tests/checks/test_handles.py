from sandbox import Sandbox
from velum_checks.handles import CHECK, classes, wrong_calls

INTERFACES = """#pragma once
namespace N {
struct Deviant {};
class Thing;
namespace NSInterface {
/// class CommentIntf { virtual void notThere(); };
class BaseIntf {
public:
    enum Id : unsigned { First = 1 };
    virtual ~BaseIntf() = default;
    virtual int size(Deviant deviant) const { return 0; }
    virtual void
    put(Deviant deviant,
        int value);
};
class EXPORT ThingIntf : public BaseIntf {
public:
    int size(Deviant deviant) const override;
    virtual void put(Deviant deviant, char const* text) = 0;
};
} // namespace NSInterface
} // namespace N
"""
HANDLES = """#pragma once
#define EXPORT
#include "n/nsinterface/intf.h"
namespace N {
class ImmutableBase {
public:
    int size() const;
};
class Base : public ImmutableBase {
public:
    void put(int value) const;
};
class Thing : public Base {
public:
    using Base::put;
    void put(char const* text) const;
};
} // namespace N
"""


class Handles(Sandbox):
    def find(self, handles: str) -> list[str]:
        self.write("build/prefix/include/n/nsinterface/intf.h", "#define EXPORT\n" + INTERFACES)
        self.write("build/prefix/include/n/handles.h", handles.replace("#define EXPORT\n", ""))
        return CHECK.find(self.project)

    def test_handles_with_all_operations_pass(self) -> None:
        self.assertEqual([], self.find(HANDLES))

    def test_a_missing_operation_is_named_with_its_handles(self) -> None:
        self.assertEqual(
            [f"there is no member N::{handle}: size() const" for handle in ("Base", "ImmutableBase", "Thing")],
            sorted(self.find(HANDLES.replace("int size() const;", ""))),
        )

    def test_an_operation_that_another_one_hides_is_missing(self) -> None:
        self.assertEqual(
            ["there is no member N::Thing: put(int value)"],
            self.find(HANDLES.replace("using Base::put;", "")),
        )

    def test_a_result_of_another_type_is_found(self) -> None:
        found = self.find(HANDLES.replace("int size() const;", "void size() const;"))
        self.assertEqual(3, len(found))

    def test_a_member_that_calls_another_operation_is_found(self) -> None:
        text = """
            int size() const { return (*this)->size(getDeviant()); }
            int all() const { return (*this)->allWithoutAssociation(getDeviant()); }
            void setOnly(int value) const {
                (*this)->set(getDeviant(), value);
            }
        """
        self.assertEqual(["setOnly calls set"], wrong_calls(text))

    def test_operations_are_read_with_their_class_and_namespace(self) -> None:
        base, thing = (each for each in classes(INTERFACES) if each.name.endswith("Intf"))
        self.assertEqual("N::NSInterface::BaseIntf", base.full_name)
        self.assertEqual(["size() const", "put(int value)"], [str(each) for each in base.operations])
        self.assertEqual(["put(char const* text)"], [str(each) for each in thing.operations])
