// Measures reading, writing and updating documents of 1, 10 and 100 MB, made by repeating samples
// in packages of their own. Prints processor times (other load on the machine doesn't count),
// throughput, the memory that writing takes beside the model, and the time of an update by that of
// reading: each the middle one of three rounds, in processes of their own because memory that a
// process has used before makes reading faster.
//
// usage: arxml_times [MEGABYTES...] SAMPLE...
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>
#include <velum_arxml/read.h>
#include <velum_arxml/update.h>
#include <velum_arxml/write.h>
#include <velum_types/types.h>

namespace {

namespace fs = std::filesystem;
namespace types = Zorvane::metamodel::types;
namespace arxml = velum::arxml;

std::string contentOf(std::string const& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// What is in the outermost AR-PACKAGES of a document.
std::string packagesOf(std::string const& file) {
    std::string const text = contentOf(file);
    std::string_view const tag = "<AR-PACKAGES>";
    std::size_t const start = text.find(tag) + tag.size();
    return text.substr(start, text.rfind("</AR-PACKAGES>") - start);
}

/// The packages with their absolute references led into a package around them.
std::string moved(std::string const& packages, std::string const& outer) {
    std::string text;
    for (std::size_t i = 0; i < packages.size(); ++i) {
        text += packages[i];
        if (packages.compare(i, 2, ">/") == 0 && i + 2 < packages.size() &&
            std::isalpha(static_cast<unsigned char>(packages[i + 2])) != 0) {
            text += "/" + outer;
        }
    }
    return text;
}

/// Returns the number of copies.
int writeDocument(fs::path const& path, std::string const& packages, std::streamoff size) {
    std::ofstream out(path, std::ios::binary);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<AUTOSAR xmlns=\"http://autosar.org/schema/r4.0\"><AR-PACKAGES>\n";
    int copies = 0;
    for (; out.tellp() < size; ++copies) {
        std::string const name = "Copy" + std::to_string(copies);
        out << "<AR-PACKAGE><SHORT-NAME>" << name << "</SHORT-NAME><AR-PACKAGES>"
            << moved(packages, name) << "</AR-PACKAGES></AR-PACKAGE>\n";
    }
    out << "</AR-PACKAGES></AUTOSAR>\n";
    return copies;
}

template <class Action>
double secondsOf(Action const& action) {
    std::clock_t const start = std::clock();
    action();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// A line of /proc/self/status, in MB.
double memory(std::string const& line) {
    std::ifstream in("/proc/self/status");
    for (std::string text; std::getline(in, text);) {
        if (text.compare(0, line.size(), line) == 0) {
            return std::stod(text.substr(line.size() + 1)) / 1024;
        }
    }
    return 0;
}

/// Gives a type another limit that shares its limits with no other one.
void changeLimit(QOB::Model const& model, int copy) {
    std::string const package = "/Copy" + std::to_string(copy) + "/";
    for (QOB::ClassObject const object : model.getRootObjects()) {
        types::FixedPoint const type(object);
        if (type.isValid() && type.hasDataConstr() && type.hasMaxValue() && type.hasExternalId() &&
            type.getDataConstr().getPrimitiveTypes().size() == 1 &&
            type.getExternalId().view().substr(0, package.size()) == package) {
            type.setMaxValue(QOB::Real(static_cast<double>(type.getMaxValue()) - 1));
            return;
        }
    }
    std::cerr << "No type with limits of its own is in the samples.\n";
    std::exit(EXIT_FAILURE);
}

/// What one reading, writing and updating take: seconds, and MB.
struct Round {
    double reading;
    double writing;
    double output;
    double taken; ///< beside the model, while it is written
    double updating;
};

Round measureOnce(fs::path const& folder, std::string const& file, int copy) {
    Round round{};
    QOB::Model const model = types::NSInterface::FactoryIntf::createNewModel();
    round.reading = secondsOf([&] { arxml::read({file}, model); });
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak begins anew
    double const before = memory("VmRSS");
    arxml::WriteReport written;
    arxml::WriteOptions options;
    options.isReadBack = false; // what was read goes round
    round.writing =
        secondsOf([&] { written = arxml::write(model, folder / "out.arxml", options); });
    round.output = static_cast<double>(written.bytes) / 1e6;
    round.taken = memory("VmHWM") - before;
    changeLimit(model, copy);
    arxml::UpdateReport report;
    round.updating = secondsOf([&] { report = arxml::update(file, model); });
    if (report.isRefused() || report.edits == 0) {
        std::cerr << "The update is refused: " << report.refusal << "\n";
        std::exit(EXIT_FAILURE);
    }
    model.destroy();
    return round;
}

Round measureInProcess(fs::path const& folder, std::string const& file, int copy) {
    int ends[2];
    if (pipe(ends) != 0) {
        std::exit(EXIT_FAILURE);
    }
    std::fflush(stdout); // not to be printed by the child too
    pid_t const child = fork();
    if (child == 0) {
        Round const round = measureOnce(folder, file, copy);
        bool const isTold = write(ends[1], &round, sizeof round) == sizeof round;
        std::_Exit(isTold ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    Round round{};
    close(ends[1]);
    if (read(ends[0], &round, sizeof round) != sizeof round) {
        std::exit(EXIT_FAILURE); // the child has said why
    }
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return round;
}

/// The middle one of the figures of all rounds.
double middle(std::vector<Round> const& rounds, double Round::*figure) {
    std::vector<double> figures;
    for (Round const& round : rounds) {
        figures.push_back(round.*figure);
    }
    std::sort(figures.begin(), figures.end());
    return figures[figures.size() / 2];
}

void measure(fs::path const& folder, std::string const& packages, int megabytes) {
    constexpr int roundCount = 3;
    std::string const file = folder / "in.arxml";
    int const copies = writeDocument(file, packages, std::streamoff(megabytes) * 1'000'000);
    double const size = static_cast<double>(fs::file_size(file)) / 1e6;
    std::vector<Round> rounds;
    for (int i = 0; i < roundCount; ++i) {
        rounds.push_back(measureInProcess(folder, file, copies / 2 + i));
    }
    double const reading = middle(rounds, &Round::reading);
    double const writing = middle(rounds, &Round::writing);
    double const updating = middle(rounds, &Round::updating);
    std::printf("%5d MB  %7.2f s  %6.1f MB/s  %7.2f s  %6.1f MB/s  %6.0f MB  %7.2f s  %6.2f\n",
                megabytes,
                reading,
                size / reading,
                writing,
                rounds.front().output / writing,
                middle(rounds, &Round::taken),
                updating,
                updating / reading);
}

} // namespace

int main(int count, char** arguments) {
    std::vector<int> sizes;
    std::vector<std::string> samples;
    for (int i = 1; i < count; ++i) {
        if (const int size = std::atoi(arguments[i]); size > 0) {
            sizes.push_back(size);
        } else {
            samples.emplace_back(arguments[i]);
        }
    }
    if (samples.empty()) {
        std::cerr << "usage: arxml_times [MEGABYTES...] SAMPLE...\n";
        return EXIT_FAILURE;
    }
    if (sizes.empty()) {
        sizes = {1, 10, 100};
    }
    types::initialize();
    std::string packages;
    for (std::string const& sample : samples) {
        packages += packagesOf(sample);
    }
    std::string name = (fs::temp_directory_path() / "arxml_times.XXXXXX").string();
    fs::path const folder = mkdtemp(name.data());
    std::printf(
        "document     read                   write               memory      update  /read\n");
    for (int const megabytes : sizes) {
        measure(folder, packages, megabytes);
    }
    fs::remove_all(folder);
}
