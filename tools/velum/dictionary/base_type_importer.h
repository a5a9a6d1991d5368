#pragma once

#include "dictionary/encoding.h"
#include "dictionary/kind_importer.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace velum::dictionary {

/// Reads SW-BASE-TYPE: keeps its encoding for the types that refer to it, and makes an integer of
/// one that no type refers to.
class BaseTypeImporter : public KindImporter {
public:
    struct BaseType {
        arxml::PathId path;
        Encoding encoding;
        std::optional<std::int32_t> bits; ///< none if the file gives no size
        bool isUsed = false;
    };

    explicit BaseTypeImporter(const ImportContext& context) : context_(context) {}

    arxml::NameId kind() const override { return arxml::element::swBaseType; }
    void take(const arxml::Fragment& fragment) override;

    /// To be called after every type has found its base type.
    void build(Dictionary& dictionary) override;

    /// The base type at a path; null if there is none. Valid until the next `take`.
    BaseType* find(arxml::PathId path);

private:
    /// Reads BASE-TYPE-SIZE; reports one that is no size and takes none then.
    std::optional<std::int32_t> readSize(const arxml::Fragment& fragment,
                                         arxml::Fragment::Index size) const;
    void reportInference(const arxml::Fragment& fragment, const Encoding& encoding) const;

    ImportContext context_;
    std::vector<BaseType> baseTypes_;
    std::unordered_map<arxml::PathId, std::size_t> byPath_;
};

} // namespace velum::dictionary
