#include "platform/process/Process.h"

#include <cassert>

namespace tavro {

namespace {
Process* currentProcess = nullptr;
}

Process::Process(Machine& machine)
    : m_machine(machine) {
    assert(!currentProcess);
    currentProcess = this;
}

Process::~Process() {
    while (!m_owned.empty())
        m_owned.pop_back();
    currentProcess = nullptr;
}

Process& Process::current() {
    assert(currentProcess);
    return *currentProcess;
}

} // namespace tavro
