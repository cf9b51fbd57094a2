#include "Matrix.h"

#include "Session.h"

#include <filesystem>
#include <fstream>

namespace {

std::string resultFile(const std::string& ending) {
    return Session::variable("TAVRO_RESULTS") + '/' + Matrix::desktop() + ending;
}

} // namespace

Matrix::Matrix(const std::string& scenario)
    : m_file(resultFile(scenario + ".result")) {
    std::filesystem::create_directories(Session::variable("TAVRO_RESULTS"));
    std::filesystem::remove(m_file);
}

std::string Matrix::desktop() {
    return Session::variable("TAVRO_DESKTOP");
}

void Matrix::note(const std::string& check, const std::string& outcome) const {
    std::ofstream(m_file, std::ios::app) << check << '\t' << outcome << '\n';
}

void Matrix::check(const std::string& name, const testing::AssertionResult& result,
                   const std::string& yes) const {
    note(name, result ? yes : "no");
    EXPECT_TRUE(result) << name;
}

void Matrix::picture(const std::string& name) {
    EXPECT_TRUE(
        Session::run("import -window root -depth 8 -quality 10 '" + resultFile("-" + name + ".png") + "'"));
}
