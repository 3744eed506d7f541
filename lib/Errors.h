#pragma once

#include <stdexcept>

namespace QkLib {

/// Base of the library's error classes. None of them crosses an export or a window procedure.
class QkError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The operation failed and what it worked on is no longer usable.
class QkSevereError : public QkError {
public:
    using QkError::QkError;
};

/// The process cannot go on.
class QkFatalError : public QkError {
public:
    using QkError::QkError;
};

/// The operation failed; the caller can put the cause right and try again.
class QkCorrectableError : public QkError {
public:
    using QkError::QkError;
};

/// The operation succeeded, with something that the caller should know.
class QkWarning : public QkError {
public:
    using QkError::QkError;
};

/// Success where an error object is asked for.
class QkNoError : public QkError {
public:
    QkNoError() : QkError("no error") {}
};

}  // namespace QkLib
