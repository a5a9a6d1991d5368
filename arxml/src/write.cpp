#include "read_back.h"
#include "writing/circles.h"
#include "writing/package_writer.h"
#include "writing/unwritten.h"

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>
#include <velum_arxml/write.h>
#include <velum_arxml/writing/output_file.h>

namespace velum::arxml {

namespace {

namespace fs = std::filesystem;

/// The elements of one file.
class Document {
public:
    Document(ByteSink sink,
             Outline const& outline,
             WriteOptions const& options,
             WriteReport& report,
             OutsideBases::IsInFile isInFile)
        : xml_(std::move(sink)),
          packages_(xml_, outline, report.findings, std::move(isInFile)),
          report_(report) {
        xml_.declaration(options.schema);
        xml_.openIfUsed("AR-PACKAGES");
    }

    void add(Outline::Entry const& entry) {
        packages_.add(entry);
        xml_.flushIfFull();
        ++report_.objects;
    }

    void finish() {
        packages_.finish();
        xml_.close("AR-PACKAGES");
        xml_.close("AUTOSAR");
        xml_.flush();
        report_.bytes += xml_.written();
    }

private:
    XmlWriter xml_;
    PackageWriter packages_;
    WriteReport& report_;
};

/// What is written: all elements of a model, or some.
using Wanted = std::unordered_set<int>;

class Writing {
public:
    Writing(QOB::Model const& model, Wanted const* wanted, WriteOptions const& options)
        : model_(model),
          outline_(model, options, report_.findings),
          wanted_(wanted),
          options_(options) {
        reportCircles(outline_, report_.findings);
        reportUnwritten(
            model,
            outline_,
            [this](Outline::Entry const& entry) { return isWanted(entry); },
            report_.findings);
    }

    WriteReport toFile(fs::path const& target) {
        if (options_.layout == Layout::oneFile) {
            OutputFile file(target);
            writeAll([&file](std::string_view piece) { file.write(piece); });
            if (!report_.isStopped) {
                file.close();
                readBack(wanted_ == nullptr ? file.temporary() : fs::path());
                file.commit();
                report_.files.push_back(target.string());
            }
        } else {
            toFolder(target);
            readBack({});
        }
        return std::move(report_);
    }

    WriteReport toSink(ByteSink sink) {
        writeAll(std::move(sink));
        readBack({});
        return std::move(report_);
    }

private:
    bool isWanted(Outline::Entry const& entry) const {
        return wanted_ == nullptr || wanted_->count(entry.object.getObjectId()) != 0;
    }

    bool isStopped() {
        constexpr std::uint64_t often = 0x3FF;
        if ((report_.objects & often) == 0 && options_.onProgress) {
            options_.onProgress(report_.objects);
        }
        report_.isStopped = report_.isStopped || options_.stop.stop_requested();
        return report_.isStopped;
    }

    void writeAll(ByteSink sink) {
        OutsideBases::IsInFile isInFile;
        if (wanted_ != nullptr) {
            isInFile = [this](Outline::Entry const& entry) { return isWanted(entry); };
        }
        Document document(std::move(sink), outline_, options_, report_, std::move(isInFile));
        for (Outline::Entry const& entry : outline_.entries()) {
            if (isWanted(entry)) {
                if (isStopped()) {
                    return;
                }
                document.add(entry);
            }
        }
        document.finish();
    }

    /// `whole` is a file that has the whole model; one is made for a while if it is empty.
    void readBack(fs::path const& whole) {
        if (report_.isStopped || !options_.isReadBack) {
            return;
        }
        const auto isWantedEntry = [this](Outline::Entry const& entry) { return isWanted(entry); };
        if (!whole.empty()) {
            reportDifferences(model_, outline_, whole.string(), isWantedEntry, report_.findings);
            return;
        }
        OutputFile file(fs::temp_directory_path() / "velum-read-back");
        WriteReport unused;
        Document document(
            [&file](std::string_view piece) { file.write(piece); }, outline_, options_, unused, {});
        for (Outline::Entry const& entry : outline_.entries()) {
            document.add(entry);
        }
        document.finish();
        file.close();
        reportDifferences(
            model_, outline_, file.temporary().string(), isWantedEntry, report_.findings);
    }

    /// All files are whole before the first one takes its name.
    void toFolder(fs::path const& folder) {
        makeOutputFolder(folder);
        OutputFiles files;
        OutputFile* file = nullptr;
        std::unique_ptr<Document> document;
        std::string_view package;
        for (Outline::Entry const& entry : outline_.entries()) {
            if (!isWanted(entry)) {
                continue;
            }
            if (isStopped()) {
                report_.files.clear();
                return;
            }
            if (document == nullptr || entry.package() != package) {
                finish(document, file);
                package = entry.package();
                const fs::path path = folder / fileName(package);
                file = &files.add(path);
                report_.files.push_back(path.string());
                document = std::make_unique<Document>(
                    [file](std::string_view piece) { file->write(piece); },
                    outline_,
                    options_,
                    report_,
                    [this, package](Outline::Entry const& other) {
                        return other.package() == package && isWanted(other);
                    });
            }
            document->add(entry);
        }
        finish(document, file);
        files.commit();
    }

    static void finish(std::unique_ptr<Document> const& document, OutputFile* file) {
        if (document != nullptr) {
            document->finish();
            file->close(); // there may be more packages than files that can be open
        }
    }

    /// "/A/B" goes to "A.B.arxml". Names that are no identifiers may make two packages one name.
    std::string fileName(std::string_view package) {
        std::string name(package.substr(1));
        std::replace(name.begin(), name.end(), '/', '.');
        std::string unique = name;
        for (int number = 2; !fileNames_.insert(unique).second; ++number) {
            unique = name + "_" + std::to_string(number);
        }
        return unique + ".arxml";
    }

    QOB::Model model_;
    WriteReport report_;
    Outline outline_;
    Wanted const* wanted_;
    WriteOptions const& options_;
    std::unordered_set<std::string> fileNames_;
};

} // namespace

WriteReport write(QOB::Model const& model, fs::path const& target, WriteOptions const& options) {
    return Writing(model, nullptr, options).toFile(target);
}

WriteReport write(std::vector<QOB::ClassObject> const& objects,
                  fs::path const& target,
                  WriteOptions const& options) {
    if (objects.empty()) {
        throw OutputError(target.string() + ": There are no objects to write.");
    }
    Wanted wanted;
    for (QOB::ClassObject const& object : objects) {
        wanted.insert(object.getObjectId());
    }
    return Writing(objects.front().getRootModel(), &wanted, options).toFile(target);
}

std::string toText(QOB::Model const& model, WriteReport& report, WriteOptions const& options) {
    std::string text;
    report =
        Writing(model, nullptr, options).toSink([&text](std::string_view piece) { text += piece; });
    return text;
}

} // namespace velum::arxml
