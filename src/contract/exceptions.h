#pragma once

#include <stdexcept>

namespace kirolane {

/// Base of the failures that the contract raises. The logic catches none of them: each delivery of an event
/// is the one catch point (see contract/core/runtime.h).
class RuntimeException : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Use of an object that is nil.
class NilObjectException : public RuntimeException {
public:
    NilObjectException() : RuntimeException("NilObjectException") {}
};

/// An index past the bound of an array, or a screen that is not there.
class OutOfBoundsException : public RuntimeException {
public:
    OutOfBoundsException() : RuntimeException("OutOfBoundsException") {}
};

/// `Run` on a thread that is running already.
class ThreadAlreadyRunningException : public RuntimeException {
public:
    ThreadAlreadyRunningException() : RuntimeException("ThreadAlreadyRunningException") {}
};

/// A file that could not be written; raised by `TextOutputStream::Close`.
class FileWriteException : public RuntimeException {
public:
    explicit FileWriteException(const std::string& what) : RuntimeException("FileWriteException: " + what) {}
};

} // namespace kirolane
