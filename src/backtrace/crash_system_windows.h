// Functions that the two files of the crash system for Windows share.
#pragma once

#include <windows.h>

namespace libvarrow::crash {

/// The exit code after a crash: that of SIGABRT in shells of other systems. That of std::abort(),
/// 3, is also the status of hosts whose plan breaks rules.
constexpr UINT kAbortExitCode = 134;

/// Continues a read of unreadable memory where the reader checks for its failure. Returns whether
/// the exception came from such a read of the calling thread.
bool endFailedRead(const EXCEPTION_POINTERS& exception);

}  // namespace libvarrow::crash
