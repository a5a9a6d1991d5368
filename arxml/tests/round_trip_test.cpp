#include "ordered.h"
#include "scratch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>
#include <velum_arxml/read.h>
#include <velum_arxml/write.h>

namespace velum::arxml {

namespace {

namespace fs = std::filesystem;
using scratch::contentOf;
using scratch::differences;
using scratch::filesIn;
using scratch::Folder;
using scratch::inText;
using scratch::Model;

void expectRoundTrip(std::vector<std::string> const& files) {
    const Folder folder;
    const Model model;
    read(files, model);
    const WriteReport first = write(model, folder / "1.arxml");
    EXPECT_EQ(scratch::misplacedIn(contentOf(folder / "1.arxml")), "");
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

} // namespace velum::arxml
