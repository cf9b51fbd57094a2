#pragma once

namespace tavro {

/// Takes away from this process all that computing and writing to open files other than those on disk do not
/// need: from now on it opens and makes no file, reaches no network, starts no program and maps no code, and
/// has bounds of memory and time. False when the kernel has no system call filters: then there are only the
/// bounds.
bool confineThisProcess();

} // namespace tavro
