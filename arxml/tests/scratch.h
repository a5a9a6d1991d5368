#pragma once

#include <filesystem>
#include <fstream>
#include <qob/qob/compare.h>
#include <sstream>
#include <string>
#include <vector>
#include <velum_arxml/write.h>
#include <velum_types/types.h>

/// Models and files that end with the test.
namespace velum::arxml::scratch {

namespace fs = std::filesystem;
namespace types = Zorvane::metamodel::types;

/// A model that ends with the scope.
class Model {
public:
    Model() {
        types::initialize();
        model_ = types::NSInterface::FactoryIntf::createNewModel();
    }
    ~Model() { model_.destroy(); }
    Model(Model const&) = delete;
    Model& operator=(Model const&) = delete;
    Model(Model&&) = delete;
    Model& operator=(Model&&) = delete;

    operator QOB::Model const&() const { return model_; }

private:
    QOB::Model model_;
};

class Folder {
public:
    Folder() {
        std::string name = (fs::temp_directory_path() / "velum.XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~Folder() { fs::remove_all(path_); }
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;
    Folder(Folder&&) = delete;
    Folder& operator=(Folder&&) = delete;

    std::string operator/(char const* name) const { return (path_ / name).string(); }

private:
    fs::path path_;
};

inline std::string contentOf(std::string const& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline std::vector<std::string> filesIn(std::string const& folder) {
    std::vector<std::string> files;
    for (auto const& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".arxml") {
            files.push_back(entry.path().string());
        }
    }
    return files;
}

inline std::string differences(QOB::Model const& left, QOB::Model const& right) {
    std::ostringstream text;
    for (QOB::Difference const& difference : QOB::compare(left, right)) {
        text << difference << '\n';
    }
    return text.str();
}

inline std::string inText(WriteReport const& report) {
    std::string text;
    for (WriteFinding const& finding : report.findings) {
        text +=
            std::string(code(finding.remark)) + ": " + finding.path + ": " + finding.text + '\n';
    }
    return text;
}

/// The object with an external id; empty without one.
inline QOB::ClassObject objectAt(QOB::Model const& model, std::string const& path) {
    for (QOB::ClassObject object : model.getRootObjects()) {
        if (object.hasExternalId() && object.getExternalId().view() == path) {
            return object;
        }
    }
    return {};
}

} // namespace velum::arxml::scratch
