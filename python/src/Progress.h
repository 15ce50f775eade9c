#pragma once

#include <QtGlobal>

#include <pybind11/pybind11.h>

#include <chrono>
#include <exception>
#include <functional>
#include <utility>

namespace Nereo::Python {

namespace py = pybind11;

/// Lets Python code follow an operation that runs without Python's lock, and interrupts it: by the callable,
/// if there is one, and by the signals that came meanwhile.
class Progress {
public:
    explicit Progress(py::object callable) : callable_(std::move(callable)) {}

    bool operator()(qint64 done, qint64 all)
    {
        // Taking the lock waits for other threads: without need it is done as seldom as a person notices.
        const auto now = std::chrono::steady_clock::now();
        if (callable_.is_none() && now < nextLook_)
            return true;
        nextLook_ = now + std::chrono::milliseconds(250);
        const py::gil_scoped_acquire acquire;
        try {
            return PyErr_CheckSignals() == 0 ? goesOn(done, all) : throw py::error_already_set();
        } catch (...) {
            error_ = std::current_exception();
            return false;
        }
    }

    /// Throws what was thrown while the lock was released. Call it with the lock.
    void rethrow() const
    {
        if (error_)
            std::rethrow_exception(error_);
    }

private:
    bool goesOn(qint64 done, qint64 all) const
    {
        return callable_.is_none() || !callable_(done, all).is(py::bool_(false));
    }

    py::object callable_;
    std::exception_ptr error_;
    std::chrono::steady_clock::time_point nextLook_ =
        std::chrono::steady_clock::now() + std::chrono::milliseconds(250);
};

/// What is called without the lock and keeps to a Progress.
inline std::function<bool(qint64, qint64)> follow(Progress& progress)
{
    return [&progress](qint64 done, qint64 all) { return progress(done, all); };
}

} // namespace Nereo::Python
