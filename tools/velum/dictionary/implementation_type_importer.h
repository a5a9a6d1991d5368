#pragma once

#include "arxml/fragment_account.h"
#include "dictionary/base_type_importer.h"
#include "dictionary/kind_importer.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace velum::dictionary {

/// Reads IMPLEMENTATION-DATA-TYPE: makes an integer of each one whose base type, its own or the one
/// at the end of its type references, has an integer encoding.
class ImplementationTypeImporter : public KindImporter {
public:
    /// `baseTypes` must outlive the importer.
    ImplementationTypeImporter(const ImportContext& context, BaseTypeImporter& baseTypes)
        : context_(context), baseTypes_(baseTypes) {}

    arxml::NameId kind() const override { return arxml::element::implementationDataType; }
    void take(const arxml::Fragment& fragment) override;
    void build(Dictionary& dictionary) override;

private:
    /// One of category VALUE or TYPE_REFERENCE.
    struct Type {
        arxml::PathId path = arxml::PathTree::root;
        arxml::FileId file = 0;
        report::Place place;
        bool isReference = false; // to another type instead of a base type
        std::optional<arxml::Reference> reference;
        report::Place referencePlace;
        arxml::FragmentAccount::Deferred elements;

        enum class State { open, onTheWay, decided } state = State::open;
        BaseTypeImporter::BaseType* baseType = nullptr;  // of a decided one, null if it has none
        report::Reason reason = report::Reason::noClass; // of one that gets no object
    };
    using Index = std::size_t;

    std::optional<bool> readCategory(const arxml::Fragment& fragment,
                                     arxml::Fragment::Index baseTypeRef,
                                     arxml::Fragment::Index typeRef) const;
    void decide(Index first);
    Type* step(Type& type);
    void fail(Type& type, report::Reason reason, const std::string& text);

    ImportContext context_;
    BaseTypeImporter& baseTypes_;
    std::vector<Type> types_;
    std::unordered_map<arxml::PathId, Index> byPath_; // into types_, `notHeld` for other categories
    static constexpr Index notHeld = static_cast<Index>(-1);
};

} // namespace velum::dictionary
