#pragma once

#include <map>
#include <string>
#include <vector>

/// The session's audio server as its other clients see it, and what they and the user do to it.
class AudioServer {
public:
    AudioServer() = default;
    AudioServer(const AudioServer&) = delete;
    AudioServer& operator=(const AudioServer&) = delete;
    /// Leaves the server as the session has started it.
    ~AudioServer();

    /// Of all speakers and microphones, by their names; monitors are none.
    static std::map<std::string, bool> muteFlags();
    static bool isMuted(const std::string& device) { return muteFlags().at(device); }
    static void mute(const std::string& device, bool isMuted);
    static void setVolume(const std::string& speaker, int percent);
    static void makeDefault(const std::string& device);
    /// The names of speakers begin with "speaker". None of the other calls can distinguish them otherwise.
    void plugInMicrophone(const std::string& name, const std::string& description = "USB");
    void plugInSpeaker(const std::string& name, const std::string& description = "USB");
    void unplug(const std::string& name);

    /// Ends it, and returns when it is gone.
    void end();
    /// Returns when it answers.
    void start();
    void freeze();
    void thaw();

private:
    void putBack();
    static std::string kindOf(const std::string& device);
    static bool isPipeWire();
    void plugInNullSink(const std::string& name, const std::string& description,
                        const std::string& properties);
    void plugIn(const std::string& name, const std::string& module);

    std::map<std::string, std::string> m_modules; // what was loaded for a device, by its name
    bool m_isFrozen = false;
    bool m_hasEnded = false;
};
