// Functions that the two files of the crash system for Windows share.
#pragma once

#include <windows.h>

namespace libvarrow::crash {

/// The code with which a process ends that aborts.
constexpr UINT kAbortExitCode = 3;

/// Continues a read of unreadable memory where the reader checks for its failure. Returns whether
/// the exception came from such a read of the calling thread.
bool endFailedRead(const EXCEPTION_POINTERS& exception);

}  // namespace libvarrow::crash
