#pragma once

#include <cstddef>
#include <exception>
#include <pthread.h>
#include <stdexcept>

namespace VelumTest {

/// Runs the body to its end on a stack of 256 KiB. What it raises is raised here.
template <class Body>
void onSmallStack(Body body) {
    struct Run {
        Body& body;
        std::exception_ptr raised;
    } run{body, nullptr};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, std::size_t{256} * 1024);
    auto* const start = +[](void* argument) -> void* {
        auto* const self = static_cast<Run*>(argument);
        try {
            self->body();
        } catch (...) {
            self->raised = std::current_exception();
        }
        return nullptr;
    };
    pthread_t thread{};
    int const failure = pthread_create(&thread, &attributes, start, &run);
    pthread_attr_destroy(&attributes);
    if (failure != 0) {
        throw std::runtime_error("no thread with a small stack");
    }
    pthread_join(thread, nullptr);
    if (run.raised) {
        std::rethrow_exception(run.raised);
    }
}

} // namespace VelumTest
