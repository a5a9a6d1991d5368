#pragma once

#include <cstdint>
#include <functional>
#include <qob/qob.h>
#include <stop_token>
#include <string>
#include <vector>
#include <velum_arxml/findings/report.h>
#include <velum_arxml/reading/sources.h>
#include <velum_arxml/source/export.h>
#include <velum_arxml/source/input_error.h>
#include <velum_arxml/source/standard_input.h>

namespace velum::arxml {

/// How a reading goes about its work. Callbacks may raise; the model is as before then.
struct Options {
    /// Called for each portion that was read, with the bytes of all files read so far.
    std::function<void(std::uint64_t bytes)> onProgress;

    /// Ends the reading soon after a stop is requested, from whatever thread.
    std::stop_token stop;

    /// Decides by the report, before anything is kept, whether the objects stay in the model.
    /// Without it they do.
    std::function<bool(Report const& report)> isAcceptable;

    /// Receives the elements of the files; may be null. They stay in memory with it.
    Sources* sources = nullptr;
};

/// Reads AUTOSAR files (plain or compressed by gzip) and makes objects of what they declare, in one
/// transaction: one step of undo if the model has undo. Each file is read once, in the order of
/// their names, so that the order given has no say in what becomes of them.
///
/// Raises `InputError` if a file can't be read as a whole; the model is as before then. Everything
/// short of that is in the report. Prints nothing.
VELUM_ARXML_EXPORT Report read(std::vector<std::string> files,
                               QOB::Model const& model,
                               Options const& options = {});

} // namespace velum::arxml
