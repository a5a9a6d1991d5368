#pragma once

#include "writing/element_output.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velum::arxml {

/// Writes elements into their packages, one after the other in the order of their paths.
class PackageWriter {
public:
    /// With `isInFile`, references to other elements go through reference bases.
    PackageWriter(XmlWriter& xml,
                  Outline const& outline,
                  std::vector<WriteFinding>& findings,
                  OutsideBases::IsInFile isInFile)
        : xml_(xml), outline_(outline), findings_(findings) {
        if (isInFile) {
            bases_.emplace(std::move(isInFile));
        }
    }

    void add(Outline::Entry const& entry);
    /// Closes all packages.
    void finish();

private:
    void enter(Outline::Entry const& first);
    void findBases(Outline::Entry const& first);
    OutsideBases* bases() { return bases_ ? &*bases_ : nullptr; }
    void leave();
    void openPackage(std::string_view name);
    void closePackage();
    void writeMaps();
    std::string mapSetName() const;

    XmlWriter& xml_;
    Outline const& outline_;
    std::vector<WriteFinding>& findings_;
    std::optional<OutsideBases> bases_;
    std::string package_;                       ///< that is open
    std::vector<std::string> open_;             ///< its name and those of the ones around it
    std::vector<bool> hasPackages_;             ///< whether AR-PACKAGES is open in each
    std::vector<Outline::Entry const*> mapped_; ///< types of the package that stand for others
};

} // namespace velum::arxml
