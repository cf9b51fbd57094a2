#pragma once

#include <gtest/gtest.h>

#include <string>

/// What the checks of one scenario came to on the desktop that runs, for the table of README.md
/// (tools/desktop-matrix).
class Matrix {
public:
    /// Forgets what an earlier run has left.
    explicit Matrix(const std::string& scenario);

    /// As tools/desktop-session names it.
    static std::string desktop();
    void note(const std::string& check, const std::string& outcome) const;
    void check(const std::string& name, const testing::AssertionResult& result,
               const std::string& yes = "yes") const;
    /// Of all screens.
    static void picture(const std::string& name);

private:
    const std::string m_file;
};
