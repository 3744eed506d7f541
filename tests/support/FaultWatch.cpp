#include "support/FaultWatch.h"

namespace QkDlgTest {

namespace {

int faultsSoFar = 0;

LONG CALLBACK count(EXCEPTION_POINTERS* exception) {
    if (exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION)
        ++faultsSoFar;
    return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

FaultWatch::FaultWatch() : handler_(AddVectoredExceptionHandler(1, &count)), before_(faultsSoFar) {}

FaultWatch::~FaultWatch() {
    RemoveVectoredExceptionHandler(handler_);
}

int FaultWatch::faults() const {
    return faultsSoFar - before_;
}

}  // namespace QkDlgTest
