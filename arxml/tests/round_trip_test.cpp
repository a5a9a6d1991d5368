#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <qob/qob/compare.h>
#include <sstream>
#include <velum_arxml/read.h>
#include <velum_arxml/write.h>
#include <velum_types/types.h>

namespace velum::arxml {

namespace {

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

std::string contentOf(std::string const& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string> filesIn(std::string const& folder) {
    std::vector<std::string> files;
    for (auto const& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".arxml") {
            files.push_back(entry.path().string());
        }
    }
    return files;
}

std::string differences(QOB::Model const& left, QOB::Model const& right) {
    std::ostringstream text;
    for (QOB::Difference const& difference : QOB::compare(left, right)) {
        text << difference << '\n';
    }
    return text.str();
}

std::string inText(WriteReport const& report) {
    std::string text;
    for (WriteFinding const& finding : report.findings) {
        text +=
            std::string(code(finding.remark)) + ": " + finding.path + ": " + finding.text + '\n';
    }
    return text;
}

void expectRoundTrip(std::vector<std::string> const& files) {
    const Folder folder;
    const Model model;
    read(files, model);
    const WriteReport first = write(model, folder / "1.arxml");
    const Model again;
    read({folder / "1.arxml"}, again);
    EXPECT_EQ(differences(model, again), "") << inText(first);
    const WriteReport second = write(again, folder / "2.arxml");
    EXPECT_EQ(contentOf(folder / "1.arxml"), contentOf(folder / "2.arxml"));
    EXPECT_EQ(inText(second), inText(first));

    write(model, folder / "packages", {.layout = Layout::filePerPackage});
    const Model ofPackages;
    read(filesIn(folder / "packages"), ofPackages);
    EXPECT_EQ(differences(model, ofPackages), "");
}

} // namespace

TEST(RoundTrip, KeepsEverySampleEqual) {
    for (auto const& entry : fs::directory_iterator(VELUM_SAMPLES)) {
        if (entry.path().extension() == ".arxml") {
            SCOPED_TRACE(entry.path());
            expectRoundTrip({entry.path().string()});
        }
    }
    const std::string samples = VELUM_SAMPLES;
    expectRoundTrip({samples + "/platform.arxml", samples + "/gearbox.arxml"});
    expectRoundTrip({samples + "/platform.arxml", samples + "/next/gearbox.arxml"});
}

TEST(RoundTrip, Try) {
    if (char const* const folder = std::getenv("VELUM_TRY")) {
        for (std::string const& file : filesIn(folder)) {
            SCOPED_TRACE(file);
            expectRoundTrip({file});
        }
        expectRoundTrip(filesIn(folder));
    }
}

} // namespace velum::arxml
