#include "platform/linux/applications/HiddenWindows.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <sstream>

namespace tavro {
namespace {

using What = HiddenWindows::Command::What;
using Texts = std::vector<std::string>;

/// A user, other applications and a window manager over the model.
///
/// Windows are written bottom to top. "A1" is the first one of application A, "a1" the same minimised; behind
/// it stand "@2", on workspace 2, "!", with our mark and at first its value, "*", active, "#", not to be
/// minimised, and "-", no window of an application. What a picture says is minimised stands behind a bar,
/// since nobody sees its place.
class Desktop {
public:
    /// Whether the model hears of states at once, or of the last one when all has been done.
    Desktop(const std::string& windows, bool tellsAtOnce)
        : m_tellsAtOnce(tellsAtOnce) {
        m_list.currentWorkspace = 1;
        for (const auto& text : split(windows, ' '))
            add(text);
    }

    void act(const std::string& steps) {
        for (const auto& step : split(steps, ';'))
            if (!step.empty())
                actOnce(step.substr(step.find_first_not_of(' ')));
    }

    std::string picture() const {
        Texts visible, minimised;
        for (const auto& window : m_list.windows)
            (window.isMinimised ? minimised : visible).push_back(describe(window));
        std::ranges::sort(minimised);
        std::string text = m_list.currentWorkspace == 1 ? "" : "at 2: ";
        for (const auto& window : visible)
            text += window + " ";
        for (text += "|"; const auto& window : minimised)
            text += " " + window;
        return text;
    }
    /// What the last step has sent.
    std::string sent() const { return m_sent; }
    Texts complaints() { return m_model.takeComplaints(); }

private:
    static Texts split(const std::string& text, char separator) {
        Texts parts;
        std::istringstream stream(text);
        for (std::string part; std::getline(stream, part, separator);)
            parts.push_back(part);
        return parts;
    }
    static xcb_window_t number(const std::string& name) {
        return static_cast<xcb_window_t>((std::toupper(name[0]) - 'A' + 1) * 16 + name[1] - '0');
    }
    static std::string name(xcb_window_t window, bool isMinimised) {
        return std::string{static_cast<char>((isMinimised ? 'a' : 'A') + window / 16 - 1),
                           static_cast<char>('0' + window % 16)};
    }
    std::string describe(const ClientWindow& window) const {
        return name(window.id, window.isMinimised) +
               (window.workspace == 1 ? "" : "@" + std::to_string(window.workspace)) +
               (window.hiddenMark ? "!" : "") + (window.id == m_list.active ? "*" : "");
    }
    void add(const std::string& text) {
        ClientWindow window;
        const auto has = [&](char sign) { return text.find(sign) != std::string::npos; };
        window.id = number(text);
        window.application = std::string(1, static_cast<char>(std::toupper(text[0])));
        window.workspace = has('@') ? 2 : 1;
        window.isMinimised = std::islower(text[0]);
        window.isApplicationWindow = !has('-');
        window.canMinimise = !has('#');
        if (has('!'))
            window.hiddenMark = static_cast<std::uint32_t>(text[text.find('!') + 1] - '0');
        m_list.windows.push_back(window);
        if (has('*'))
            m_list.active = window.id;
    }
    ClientWindow& at(const std::string& name) { return *find(number(name)); }
    ClientWindow* find(xcb_window_t window) { return const_cast<ClientWindow*>(m_list.find(window)); }
    std::set<std::string> applications() const {
        std::set<std::string> names;
        for (const auto& window : m_list.windows)
            names.insert(window.application);
        return names;
    }

    void actOnce(const std::string& step) {
        const auto verb = step.substr(0, step.find(' '));
        const auto object = step.substr(std::min(step.size(), verb.size() + 1));
        m_sent.clear();
        ++m_list.moment;
        userDoes(verb, object);
        othersDo(verb, object);
        ourProgramDoes(verb, object);
        carryOut();
    }
    void userDoes(const std::string& verb, const std::string& object) {
        if (verb == "show")
            activate(at(object));
        else if (verb == "minimise")
            minimise(at(object));
        else if (verb == "take")
            at(object).workspace = m_list.currentWorkspace;
        else if (verb == "go") {
            m_list.currentWorkspace = static_cast<std::uint32_t>(std::stoi(object));
            chooseActive();
            m_model.arrived(m_list, m_now);
        } else if (verb == "wait")
            m_now += std::chrono::seconds(5);
        else if (verb == "focus") { // as the window manager tells on its way
            m_list.active = number(object);
            m_model.activeIs(m_list.active, m_now);
        }
    }
    void othersDo(const std::string& verb, const std::string& object) {
        if (verb == "open") {
            add(object);
            if (m_list.isOnCurrentWorkspace(m_list.windows.back()))
                activate(m_list.windows.back());
        } else if (verb == "quit" || verb == "vanish") {
            std::erase_if(m_list.windows, [&](const auto& window) { return window.application == object; });
            chooseActive();
            if (m_watched.erase(number(object + "1")) > 0)
                m_gone.push_back({number(object + "1"), m_list.moment});
        }
        if (verb == "quit" || verb == "told")
            for (const auto& [window, moment] : std::exchange(m_gone, {}))
                m_model.destroyed(window, moment);
        if (verb == "busy" || verb == "calm")
            m_isBusy = verb == "busy";
        if (verb == "deaf" || verb == "hear")
            m_isDeaf = verb == "deaf";
        if (verb == "some")
            m_allowance = std::stoi(object);
        if (verb == "clears" || verb == "maps" || verb == "neither")
            m_wayInPlace = verb;
    }
    void ourProgramDoes(const std::string& verb, const std::string& object) {
        const auto* front = m_list.find(m_model.front(m_list.active, m_now));
        if (verb == "on") {
            for (const auto& application : applications())
                if (!front || application != front->application)
                    m_model.hide(application, m_list);
        } else if (verb == "off") {
            m_model.stopHiding();
            for (const auto& application : applications())
                m_model.unhide(application);
            m_model.restore(m_list, m_now);
            if (front)
                m_model.bringToFront(front->id, m_now);
        } else if (verb == "hide") {
            m_model.hide(object, m_list);
        } else if (verb == "unhide") {
            m_model.unhide(object);
        } else if (verb == "restore") {
            m_model.restore(m_list, m_now);
        } else if (verb == "stop") {
            m_model.stopHiding();
        } else if (verb == "settled") {
            m_model.settled(m_now);
        } else if (verb == "crash") {
            m_model = HiddenWindows();
            m_watched.clear();
        } else if (verb == "leave") {
            for (const auto way : HiddenWindows::waysInPlace)
                if (!m_model.haveReturned(m_list)) {
                    m_model.bringBackInPlace(way, m_list);
                    carryOut();
                }
            m_model.haveReturned(m_list);
        }
    }

    /// Properties and what we watch are the server's; the rest waits while the window manager is busy.
    void take() {
        for (const auto& command : m_model.takeCommands()) {
            m_sent += (m_sent.empty() ? "" : ", ") + nameOf(command);
            auto* window = find(command.window);
            if (command.what == What::watch && window)
                m_watched.insert(window->id);
            else if (command.what == What::unwatch)
                m_watched.erase(command.window);
            else if (command.what == What::mark && window)
                window->hiddenMark = command.value;
            else if (command.what == What::unmark && window)
                window->hiddenMark.reset();
            else
                m_requests.push_back(command);
        }
    }
    void carryOut() {
        for (take(); !m_requests.empty() && (!m_isBusy || m_allowance-- > 0); take()) {
            const auto request = m_requests.front();
            m_requests.erase(m_requests.begin());
            if (auto* window = find(request.window))
                obey(request, *window);
        }
        tell();
        take();
    }
    void obey(const HiddenWindows::Command& request, ClientWindow& window) {
        if (request.what == What::minimise)
            minimise(window);
        else if (request.what == What::activate)
            activate(window);
        else if (request.what == What::raise)
            raise(window);
        else if (request.what == What::moveTo)
            window.workspace = request.value;
        else if (m_wayInPlace == (request.what == What::clearHidden ? "clears" : "maps"))
            comeBackInPlace(request.what, window);
    }
    static std::string nameOf(const HiddenWindows::Command& command) {
        static const char* const names[] = {"watch",    "unwatch", "mark",        "unmark", "minimise",
                                            "activate", "raise",   "clearHidden", "map",    "moveTo"};
        return names[static_cast<int>(command.what)] + (" " + name(command.window, false)) +
               (command.what == What::mark ? " at " + std::to_string(command.value) : "");
    }

    void minimise(ClientWindow& window) {
        window.isMinimised = true;
        chooseActive();
        changed(window.id);
    }
    // As the window manager of Xfce does it: here, wherever the window was.
    void activate(ClientWindow& window) {
        const auto id = window.id;
        window.isMinimised = false;
        window.workspace = m_list.currentWorkspace;
        m_list.active = id;
        raise(window);
        changed(id);
    }
    void raise(ClientWindow& window) {
        const auto raised = window;
        std::erase_if(m_list.windows, [&](const auto& other) { return other.id == raised.id; });
        m_list.windows.push_back(raised);
    }
    void comeBackInPlace(What way, ClientWindow& window) {
        window.isMinimised = false;
        if (way == What::map)
            window.workspace = m_list.currentWorkspace;
    }
    void chooseActive() {
        const auto* uppermost = m_list.uppermost();
        m_list.active = uppermost ? uppermost->id : xcb_window_t{XCB_NONE};
    }
    void changed(xcb_window_t window) {
        if (m_watched.contains(window))
            m_changed.insert(window);
        if (m_tellsAtOnce)
            tell();
    }
    void tell() {
        if (m_isDeaf)
            return;
        for (const auto window : std::exchange(m_changed, {}))
            if (const auto* found = m_list.find(window))
                m_model.stateIs(window, found->isMinimised);
    }

    const bool m_tellsAtOnce;
    bool m_isBusy = false;
    bool m_isDeaf = false; // what the server tells of windows reaches us later
    int m_allowance = 0;   // of requests, while it is busy
    std::string m_wayInPlace = "clears";
    ClientList m_list;
    HiddenWindows m_model;
    HiddenWindows::Time m_now;
    std::set<xcb_window_t> m_watched, m_changed;
    std::vector<std::pair<xcb_window_t, std::uint32_t>> m_gone;
    std::vector<HiddenWindows::Command> m_requests;
    std::string m_sent;
};

TEST(HiddenWindowsTest, EndWhereTheUserExpectsThem) {
    const struct {
        const char* what;
        const char* windows;
        const char* steps;
        const char* expected; // none: as at first
    } cases[] = {
        {"hidden", "A1 B1 A2 C1*", "on", "C1* | a1! a2! b1!"},
        {"off twice", "A1 B1 A2 C1*", "on; off; off", ""},
        {"on twice", "A1 B1*", "on; on; off", ""},
        {"off without on", "A1 b1 C1*", "off", ""},
        {"order, two applications", "B1 A1 B2*", "on; off", ""},
        {"order, several windows", "B1 A1 A2 B2 C1 B3 A3*", "on; off", ""},
        {"order, with some minimised", "A1 B1 c1 C2 b2 A2*", "on; off", ""},
        {"order, another window in front at the end", "A1 B1 B2 C1*", "on; show B1; off", "A1 B2 C1 B1* |"},
        {"order, recorded once", "A1 B1 C1*", "hide A; show B1; hide B; unhide A; unhide B; restore",
         "A1 B1* C1 |"},
        {"order, of the last time", "A1 B1 C1*", "on; stop; show B1; show A1; show C1; on; off",
         "B1 A1 C1* |"},
        {"order, of the last time by itself", "A1 B1 C1*",
         "hide A; hide B; unhide A; unhide B; restore; show B1; show A1; show C1; on; off", "B1 A1 C1* |"},
        {"no application window", "A1- B1*", "on", "A1 B1* |"},
        {"not to be minimised", "A1# B1*", "on", "A1 B1* |"},
        {"nobody in front", "A1 B1", "on", "| a1! b1!"},
        {"only one comes back", "A1 B1 C1*", "on; unhide A; restore", "A1* C1 | b1!"},
        {"hidden again before it has come back", "A1 B1*", "on; unhide A; hide A; restore", "B1* | a1!"},

        {"brought back by the user", "A1 A2 B1*", "on; show A1", "B1 A1* | a2!"},
        {"and put away by the user", "A1 A2 B1*", "on; show A1; minimise A1; off", "A2 B1* | a1"},
        {"and on return still there", "A1 B1*", "on; show A1; go 2; go 1", "B1 A1* |"},
        {"opened meanwhile", "A1 B1*", "on; open A2; go 2; go 1", "B1 A2* | a1!"},
        {"quit and started again after the end", "A1 B1*", "on; quit A; off; open A1; go 2; go 1",
         "B1 A1* |"},
        {"the same number, used again", "A1 B1*", "on; quit A; open A1; minimise A1; show B1; off",
         "B1* | a1"},
        {"the same number, the end told late", "A1 B1*", "on; vanish A; open A1; show B1; on; told; show A1",
         "B1 A1* |"},

        {"elsewhere: left alone", "A1@2 B1*", "on", ""},
        {"elsewhere: hidden on arrival", "A1@2 C1@2 B1*", "on; go 2", "at 2: B1 | a1@2! c1@2!"},
        {"elsewhere: back there", "A1@2 C1@2 B1*", "on; go 2; off; go 1", "B1* A1@2 C1@2 |"},
        {"elsewhere: back on arrival", "A1@2 C1@2 B1*", "on; go 2; go 1; off", "B1* | a1@2! c1@2!"},
        {"elsewhere: back on arrival, order and focus", "C1@2 B1* A1@2 B2@2", "on; go 2; go 1; off; go 2",
         "at 2: B1 C1@2 A1@2 B2@2* |"},
        {"elsewhere: hidden again before the arrival", "A1@2 B1*", "on; go 2; go 1; off; on; go 2",
         "at 2: B1 | a1@2!"},
        {"elsewhere: put away by the user", "A1@2 B1*", "on; minimise A1; go 2; off", "at 2: B1 | a1@2"},
        {"elsewhere: brought here by the user", "A1@2 B1*", "on; take A1; go 2; go 1", "A1 B1* |"},
        {"elsewhere: off before the arrival", "A1@2 B1*", "on; off; go 2", "at 2: A1@2* B1 |"},
        {"elsewhere: off before the arrival, for itself", "A1@2 B1*", "hide A; unhide A; restore; go 2",
         "at 2: A1@2* B1 |"},
        {"elsewhere: no more hiding", "A1 C1@2 B1*", "on; stop; go 2", "at 2: C1@2* B1 | a1!"},
        {"elsewhere: the number used again", "A1@2 B1*", "on; quit A; open A1@2; go 2", "at 2: B1 A1@2* |"},

        {"asked, not yet seen: off", "A1 B1 A2 B2*", "busy; on; off; calm", ""},
        {"asked, not yet seen: on again", "A1 B1 A2 B2*", "on; busy; off; on; calm", "B1 B2* | a1! a2!"},
        {"asked, not yet seen: off after that", "A1 B1 A2 B2*", "on; busy; off; on; calm; off", ""},
        {"asked, not yet seen: on twice", "A1 B1*", "busy; on; on; calm; show A1", "B1 A1* |"},
        {"asked, not yet seen: the first told late", "A1 B1*", "deaf; on; busy; off; on; hear; calm; off",
         ""},
        {"asked, not yet seen: the second told late", "A1 B1*",
         "on; deaf; off; busy; on; off; hear; on; calm; off", ""},
        {"asked, not yet seen: all at once", "A1 B1 A2 B2*", "busy; on; off; on; off; calm", ""},
        {"asked, half done: the order", "A1 B1 A2 B2*", "on; busy; off; some 1; on; calm; off", ""},
        {"asked, not yet seen: another in front on the way", "A1 A2 B1*", "on; busy; off; focus A1; on; calm",
         "B1* | a1! a2!"},
        {"asked long ago: put away by the user", "A1 B1*",
         "busy; on; off; calm; wait; settled; minimise A1; on; off", "B1* | a1"},

        {"the next process", "A1 B1 a2 C1 B2*", "on; crash; off", "B1 A1 C1 B2* | a2"},
        {"the next process, brought back before", "A1 C1 B1*", "on; crash; show A1; off", "B1 C1 A1* |"},
        {"the next process, by the marks alone", "a1!1 b1!0 C1*", "off", "B1 A1 C1* |"},
        {"the next process, elsewhere", "A1@2 B1*", "on; go 2; go 1; crash; off; go 2", "at 2: B1 A1@2* |"},

        {"the end, elsewhere", "A1 C1 B1*", "on; go 2; off; leave", "at 2: A1 C1 B1 |"},
        {"the end, elsewhere, by mapping", "A1 C1 B1*", "maps; on; go 2; off; leave", "at 2: A1 C1 B1 |"},
        {"the end, elsewhere, by no way", "A1 C1 B1*", "neither; on; go 2; off; leave", "at 2: B1 | a1! c1!"},
        {"the end, elsewhere, of one only", "A1 C1 B1*", "on; go 2; unhide A; restore; leave",
         "at 2: A1 B1 | c1!"},
        {"the end without turning off", "A1 B1*", "on; go 2; leave", "at 2: B1 | a1!"},
    };
    for (const auto& [what, windows, steps, expected] : cases)
        for (const bool tellsAtOnce : {true, false}) {
            SCOPED_TRACE(std::string(what) + (tellsAtOnce ? ", told at once" : ", told afterwards"));
            Desktop desktop(windows, tellsAtOnce);
            const auto before = desktop.picture();
            desktop.act(steps);
            EXPECT_EQ(desktop.picture(), *expected ? expected : before);
        }
}

TEST(HiddenWindowsTest, AskInAnOrderThatLosesNothing) {
    const struct {
        const char* what;
        const char* windows;
        const char* steps;
        const char* sent;
    } cases[] = {
        {"marked before it is minimised", "B1 A1 B2*", "on", "watch A1, mark A1 at 1, minimise A1"},
        {"from the bottom to the top, those that stay in their turn", "A1 B1 A2 B2*", "on; off",
         "unmark A1, activate A1, raise B1, unmark A2, activate A2, raise B2, activate B2, unwatch A1, "
         "unwatch A2"},
        {"neither what is minimised nor a panel", "b2 C1 A1- B1*", "on; off",
         "unmark C1, activate C1, raise B1, activate B1, unwatch C1"},
        {"one of the process before, back already", "A1!1 B1*", "off", "unmark A1, activate B1"},
        {"brought back, and not told yet", "A1 B1*", "on; deaf; show A1; off",
         "unmark A1, unwatch A1, raise B1, activate A1"},
        {"the user's is let go", "A1 B1*", "on; show A1", "unmark A1, unwatch A1"},
        {"put away by the user before: left alone", "a1 a2@2 B1*", "on", ""},
        {"elsewhere: only watched", "A1@2 B1*", "on", "watch A1"},
        {"elsewhere: let go", "A1@2 B1*", "on; off", "unwatch A1, activate B1"},
        {"the focus left below", "A1 B1 C1*", "on; off; focus A1", "activate C1"},
        {"the focus left below, again", "A1 B1 C1*", "on; off; focus A1; focus C1; focus B1", "activate C1"},
        {"the focus has been everywhere", "A1 B1 C1*", "on; off; focus B1; focus C1; focus A1", ""},
        {"the focus given away by the user", "A1 C2 C1*", "on; off; focus C2", ""},
        {"the focus after hiding again", "A1 B1 C1*", "on; off; on; focus A1", ""},
        {"the focus given away later", "A1 B1 C1*", "on; off; wait; focus A1", ""},
        {"moved along by mapping, and sent back", "A1 B1*", "maps; on; go 2; off; leave",
         "clearHidden A1, map A1, moveTo A1, unmark A1, unwatch A1"},
    };
    for (const auto& [what, windows, steps, sent] : cases) {
        SCOPED_TRACE(what);
        Desktop desktop(windows, true);
        desktop.act(steps);
        EXPECT_EQ(desktop.sent(), sent);
    }
}

TEST(HiddenWindowsTest, SayWhichCannotBeMinimised) {
    Desktop desktop("A1# A2 B1*", true);
    desktop.act("on");
    EXPECT_EQ(desktop.complaints(), Texts{"A window of \"A\" cannot be minimised and stays"});
    EXPECT_EQ(desktop.complaints(), Texts());
}

} // namespace
} // namespace tavro
