#include "AudioServer.h"

#include "support/ChildProcess.h"
#include "support/WaitUntil.h"
#include "support/desktop/Session.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace {

constexpr auto piece = "sound";

void pactl(const std::string& arguments) {
    if (!Session::run("pactl " + arguments))
        throw std::runtime_error("pactl " + arguments);
}

std::string outputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), &::pclose);
    std::string output;
    char buffer[4096];
    while (const auto size = std::fread(buffer, 1, sizeof buffer, pipe.get()))
        output.append(buffer, size);
    return output;
}

} // namespace

AudioServer::~AudioServer() {
    try {
        putBack();
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
}

void AudioServer::putBack() {
    thaw();
    if (m_hasEnded)
        start();
    while (!m_modules.empty())
        unplug(m_modules.begin()->first);
    for (const auto& [name, isMuted] : muteFlags())
        mute(name, false);
    makeDefault("speaker_1");
    makeDefault("mic_1");
}

std::map<std::string, bool> AudioServer::muteFlags() {
    std::map<std::string, bool> flags;
    for (const std::string kind : {"sinks", "sources"}) {
        const auto answer = outputOf("pactl -f json list " + kind);
        for (const QJsonValue device : QJsonDocument::fromJson(QByteArray::fromStdString(answer)).array())
            if (device["properties"]["device.class"].toString() != "monitor")
                flags[device["name"].toString().toStdString()] = device["mute"].toBool();
    }
    return flags;
}

std::string AudioServer::kindOf(const std::string& device) {
    return device.starts_with("speaker") ? "sink" : "source";
}

void AudioServer::mute(const std::string& device, bool isMuted) {
    pactl("set-" + kindOf(device) + "-mute " + device + (isMuted ? " 1" : " 0"));
}

void AudioServer::setVolume(const std::string& speaker, int percent) {
    pactl("set-sink-volume " + speaker + " " + std::to_string(percent) + "%");
}

void AudioServer::makeDefault(const std::string& device) {
    pactl("set-default-" + kindOf(device) + " " + device);
}

void AudioServer::plugInMicrophone(const std::string& name, const std::string& description) {
    if (isPipeWire())
        return plugInNullSink(name, description, "media.class=Audio/Source/Virtual ");
    plugIn(name, "module-null-source source_name=" + name + R"( "description=')" + description + R"('")");
}

void AudioServer::plugInSpeaker(const std::string& name, const std::string& description) {
    plugInNullSink(name, description, "");
}

void AudioServer::plugInNullSink(const std::string& name, const std::string& description,
                                 const std::string& properties) {
    plugIn(name, "module-null-sink " + properties + "sink_name=" + name +
                     R"( "sink_properties=\"device.description=')" + description + R"('\"")");
}

bool AudioServer::isPipeWire() {
    static const bool isIt = Session::run("pactl info | grep -q PipeWire");
    return isIt;
}

void AudioServer::plugIn(const std::string& name, const std::string& module) {
    const auto number = outputOf("pactl load-module " + module);
    if (number.empty())
        throw std::runtime_error("the server did not take " + name);
    m_modules[name] = number;
}

void AudioServer::unplug(const std::string& name) {
    const auto module = m_modules.extract(name);
    pactl("unload-module " + module.mapped());
}

void AudioServer::end() {
    Session::signal(piece, SIGTERM);
    if (!waitForEnd(Session::pid(piece)))
        throw std::runtime_error("the audio server does not end");
    m_modules.clear();
    m_hasEnded = true;
}

void AudioServer::start() {
    Session::start(piece);
    const auto answers = [] { return Session::run("pactl info >/dev/null 2>&1"); };
    if (!waitUntil(answers, [] {})) // each look is a question, which takes its time
        throw std::runtime_error("the audio server does not answer");
    m_hasEnded = false;
}

void AudioServer::freeze() {
    Session::signal(piece, SIGSTOP);
    m_isFrozen = true;
}

void AudioServer::thaw() {
    if (m_isFrozen)
        Session::signal(piece, SIGCONT);
    m_isFrozen = false;
}
