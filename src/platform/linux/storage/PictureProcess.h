#pragma once

#include "platform/linux/storage/PictureAnswer.h"

#include <QProcess>
#include <QStringList>

#include <filesystem>
#include <functional>

namespace tavro {

/// One run of the program that decodes pictures, ended when what it writes, or how long it takes, is too
/// much.
class PictureProcess final : public QProcess {
public:
    explicit PictureProcess(QObject* parent = nullptr);
    ~PictureProcess() override;

    /// Starts it with a file; an empty path is an empty file. The block runs once, when it has ended, or
    /// could not be started. False, and nothing more, for what is no file.
    bool decode(const std::filesystem::path& program, const std::filesystem::path& file,
                const QStringList& arguments, std::function<void()> whenDone);
    /// Returns when it has ended.
    void wait();

    // Of one that has ended.
    bool hasFailedToStart() const { return error() == FailedToStart; }
    std::optional<Image> image() const;
    bool isConfined() const { return m_answer.isConfined(); }

private:
    void read();
    void end();

    PictureAnswer m_answer;
    bool m_isTooMuch = false;
    std::function<void()> m_whenDone;
};

} // namespace tavro
