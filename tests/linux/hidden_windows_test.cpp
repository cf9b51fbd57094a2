#include "platform/linux/applications/HiddenWindows.h"

#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <sstream>

namespace tavro {
namespace {

using Command = HiddenWindows::Command;
using What = Command::What;

/// The model with a user, other applications and a window manager around it.
///
/// Windows are written bottom to top. "A1" is the first one of application A, "a1" the same minimised; behind
/// it stand "@2", on workspace 2, "*", active, "#", one that the window manager does not minimise, "-", no
/// window of an application, and in a picture "!", with our mark, and "~", concealed. What is minimised
/// stands behind a bar there, since nobody sees its place.
class Desktop {
public:
    explicit Desktop(const std::string& windows) {
        m_list.currentWorkspace = 1;
        std::istringstream words(windows);
        for (std::string word; words >> word;)
            add(word);
    }

    /// Steps, each a verb and mostly an object, with ";" between them.
    void act(const std::string& steps) {
        std::istringstream stream(steps);
        for (std::string step; std::getline(stream, step, ';');) {
            std::istringstream words(step);
            std::string verb, object;
            words >> verb >> object;
            m_sent.clear();
            act(verb, object);
            carryOut();
        }
    }
    std::string picture() const {
        std::string visible = m_list.currentWorkspace == 1 ? "" : "at 2: ", minimised;
        for (const auto& window : m_list.windows)
            if (window.isMinimised)
                minimised += " " + describe(window);
            else
                visible += describe(window) + " ";
        return visible + "|" + minimised;
    }
    /// What the last step has sent, or complained of.
    std::string sent() const { return m_sent; }

private:
    static xcb_window_t number(const std::string& name) {
        return static_cast<xcb_window_t>(std::toupper(name[0]) << 8 | name[1]);
    }
    static std::string name(xcb_window_t window) {
        return {static_cast<char>(window >> 8), static_cast<char>(window)};
    }
    std::string describe(const ClientWindow& window) const {
        auto text = (window.isConcealed ? "~" : "") + name(window.id) + (window.workspace == 1 ? "" : "@2") +
                    (window.hiddenMark ? "!" : "") + (window.id == m_list.active ? "*" : "");
        text[0] = static_cast<char>(window.isMinimised ? std::tolower(text[0]) : text[0]);
        return text;
    }
    void add(const std::string& text) {
        const auto has = [&](char sign) { return text.find(sign) != std::string::npos; };
        auto& window = m_list.windows.emplace_back();
        window.id = number(text);
        window.application = name(window.id).substr(0, 1);
        window.workspace = has('@') ? 2 : 1;
        window.isMinimised = std::islower(text[0]);
        window.isApplicationWindow = !has('-');
        if (has('#'))
            m_stubborn.insert(window.id);
        if (has('*'))
            m_list.active = window.id;
    }
    ClientWindow* find(xcb_window_t window) { return const_cast<ClientWindow*>(m_list.find(window)); }

    void act(const std::string& verb, const std::string& object) {
        const std::map<std::string, std::function<void()>> verbs{
            // The user.
            {"show", [&] { activate(*find(number(object))); }},
            {"minimise", [&] { minimise(*find(number(object))); }},
            {"maximise", [&] { stateChanged(number(object)); }},
            {"take", [&] { find(number(object))->workspace = m_list.currentWorkspace; }},
            {"go", [&] { goTo(static_cast<std::uint32_t>(object[0] - '0')); }},
            {"wait", [&] { m_now += std::chrono::seconds(5); }},
            // Other applications.
            {"open", [&] { open(object); }},
            {"quit", [&] { quit(object); }},
            // The window manager, which may do things later, and the server, of which we may hear later.
            {"focus", [&] { focus(number(object)); }},
            {"busy", [&] { m_isBusy = true; }},
            {"calm", [&] { m_isBusy = false; }},
            {"dies", [&] { m_isDead = true; }},
            {"next", [&] { startNext(); }},
            {"refuse", [&] { m_refuses = true; }},
            {"obey", [&] { m_refuses = false; }},
            {"deaf", [&] { m_isDeaf = true; }},
            {"hear", [&] { m_isDeaf = false; }},
            {"activates", [&] { m_ignoresRaise = true; }},
            {"tiles", [&] { m_list.canMinimise = false; }},
            {"maps", [&] { m_wayInPlace = What::map; }},
            // Our program.
            {"on", [&] { turnOn(); }},
            {"off", [&] { turnOff(); }},
            {"hide", [&] { m_model.hide(object, read()); }},
            {"unhide", [&] { m_model.unhide(object); }},
            {"restore", [&] { m_model.restore(read()); }},
            {"stop", [&] { m_model.stopHiding(); }},
            {"leave", [&] { leave(); }},
            {"crash", [&] { m_model = HiddenWindows(); }},
        };
        verbs.at(verb)();
    }
    void goTo(std::uint32_t workspace) {
        m_list.currentWorkspace = workspace;
        chooseActive();
        m_model.arrived(read(), m_now);
    }
    void focus(xcb_window_t window) {
        m_list.active = window;
        m_model.activeIs(window, m_now);
    }
    void open(const std::string& text) {
        add(text);
        if (m_list.isOnCurrentWorkspace(m_list.windows.back()))
            activate(m_list.windows.back());
    }
    void quit(const std::string& application) {
        m_gone.emplace_back(number(application + "1"), m_list.moment);
        std::erase_if(m_list.windows, [&](const auto& window) { return window.application == application; });
        chooseActive();
    }
    const ClientList& read() {
        ++m_list.moment;
        return m_list;
    }
    void turnOn() {
        const auto* front = m_list.find(m_model.front(m_list.active, m_now));
        for (const auto& window : read().windows)
            if (window.application != front->application)
                m_model.hide(window.application, m_list);
    }
    void turnOff() {
        const auto front = m_model.front(m_list.active, m_now);
        m_model.stopHiding();
        for (const auto& window : m_list.windows)
            m_model.unhide(window.application);
        m_model.restore(read());
        m_model.bringToFront(front, m_now);
    }
    void leave() {
        for (const auto way : HiddenWindows::waysInPlace)
            if (!m_model.haveReturned(m_list)) {
                m_model.bringBackInPlace(way, m_list);
                carryOut();
            }
        m_model.haveReturned(m_list);
    }

    /// The next window manager knows nothing of what the one before was asked for.
    void startNext() {
        m_isDead = false;
        m_requests.clear();
        m_model.windowManagerChanged();
        m_isOutstanding = true;
    }

    void carryOut() {
        for (take(); !m_isBusy && !m_isDead && !m_requests.empty(); take())
            obeyNext();
        hear();
        if (!m_isBusy && !m_isDead && !m_isDeaf && std::exchange(m_isOutstanding, false)) {
            m_model.carriedOut(read());
            carryOut();
        }
        take();
    }
    void obeyNext() {
        const auto request = m_requests.front();
        m_requests.erase(m_requests.begin());
        if (auto* window = find(request.window); window && !m_refuses)
            obey(request, *window);
    }
    /// Properties are the server's; the rest waits while the window manager is busy.
    void take() {
        static const char* const names[] = {"watch",   "unwatch",     "mark",     "unmark",
                                            "conceal", "reveal",      "minimise", "activate",
                                            "raise",   "clearHidden", "map",      "moveTo"};
        for (const auto& command : m_model.takeCommands()) {
            note(names[static_cast<int>(command.what)] + (" " + name(command.window)));
            auto* window = find(command.window);
            if (command.what >= What::minimise)
                m_requests.push_back(command), m_isOutstanding = true;
            else if (window && command.what == What::mark) {
                window->hiddenMark = command.value & ~ClientWindow::concealedFlag;
                window->isConcealed = command.value & ClientWindow::concealedFlag;
            } else if (window && command.what == What::unmark) {
                window->hiddenMark.reset();
                window->isConcealed = false;
            }
        }
        for (const auto& complaint : m_model.takeComplaints())
            note(complaint);
    }
    void note(const std::string& text) { m_sent += (m_sent.empty() ? "" : ", ") + text; }
    void obey(const Command& request, ClientWindow& window) {
        if (request.what == What::minimise)
            minimise(window);
        else if (request.what == What::activate)
            activate(window);
        else if (request.what == What::raise && !m_ignoresRaise)
            raise(window);
        else if (request.what == What::moveTo)
            window.workspace = request.value;
        else if (request.what == m_wayInPlace) {
            window.isMinimised = false;
            if (request.what == What::map)
                window.workspace = m_list.currentWorkspace;
        }
    }

    void minimise(ClientWindow& window) {
        if (m_stubborn.contains(window.id))
            return;
        window.isMinimised = true;
        chooseActive();
        stateChanged(window.id);
    }
    // As the window manager of Xfce does it: here, wherever the window was.
    void activate(ClientWindow& window) {
        window.isMinimised = false;
        window.workspace = m_list.currentWorkspace;
        m_list.active = window.id;
        stateChanged(window.id);
        raise(window);
    }
    void raise(ClientWindow& window) {
        const auto raised = window;
        std::erase_if(m_list.windows, [&](const auto& other) { return other.id == raised.id; });
        m_list.windows.push_back(raised);
    }
    void chooseActive() {
        const auto* uppermost = m_list.uppermost();
        m_list.active = uppermost ? uppermost->id : xcb_window_t{XCB_NONE};
    }
    void stateChanged(xcb_window_t window) {
        m_changed.insert(window);
        hear();
    }
    void hear() {
        if (m_isDeaf)
            return;
        for (const auto& [window, moment] : std::exchange(m_gone, {}))
            m_model.destroyed(window, moment);
        for (const auto window : std::exchange(m_changed, {}))
            if (const auto* found = m_list.find(window))
                m_model.stateIs(window, found->isMinimised);
    }

    bool m_isBusy = false, m_isDead = false, m_isDeaf = false, m_refuses = false, m_ignoresRaise = false;
    bool m_isOutstanding = false; // a question whether the window manager has come so far
    What m_wayInPlace = What::clearHidden;
    ClientList m_list;
    HiddenWindows m_model;
    HiddenWindows::Time m_now;
    std::set<xcb_window_t> m_changed, m_stubborn;
    std::vector<std::pair<xcb_window_t, std::uint32_t>> m_gone;
    std::vector<Command> m_requests;
    std::string m_sent;
};

struct Case {
    const char *what, *windows, *steps;
    const char* expected; // of a picture, none: as at first
};

TEST(HiddenWindowsTest, EndWhereTheUserExpectsThem) {
    const Case cases[] = {
        {"not an application's", "A1- C1*", "on", "A1 C1* |"},
        {"not minimised by the window manager", "A1 B1# C1*", "on; maximise B1", "~B1! C1* | a1!"},
        {"not minimised, and back, raised by activation alone", "A1 B1# D1 C1*", "activates; on; off", ""},
        {"in their order, raised by activation alone", "A1 B1 C1 B2*", "activates; on; off", ""},
        {"not minimised, after a crash", "A1 B1# C1*", "on; crash; off", ""},
        {"minimised late", "A1 B1*", "refuse; on; minimise A1", "B1* | a1!"},
        {"minimised late, and back", "A1 B1*", "refuse; on; minimise A1; obey; off", ""},
        {"minimised late, and back before that is heard", "A1 B1*",
         "refuse; on; deaf; minimise A1; obey; off; hear", ""},
        {"a window manager that does not minimise: back", "B1@2 A1 C1*", "tiles; on; off", ""},
        {"hidden again before it has come back", "A1 B1*", "on; unhide A; hide A; restore", "B1* | a1!"},
        {"another state changes", "A1 B1*", "on; maximise A1", "B1* | a1!"},
        {"in front later, by the user", "A1 B1*", "on; off; wait; show A1; on", "A1* | b1!"},
        {"in front at once, and new", "A1 B1*", "on; off; open C1; on", "C1* | a1! b1!"},

        {"order", "B1 A1 c1 A2 B2 C2 B3 a4 A3*", "on; on; off; off", ""},
        {"order, another in front at the end", "A1 B1 B2 C1*", "on; show B1; off", "A1 B2 C1 B1* |"},
        {"order, of the last time alone", "A1 B1 C1*",
         "hide A; hide B; unhide A; unhide B; restore; show B1; show A1; show C1; on; off", "B1 A1 C1* |"},
        {"order, one still hidden", "A1 B1 C1*",
         "on; stop; unhide A; restore; show A1; hide C; unhide C; restore", "C1* A1 | b1!"},
        {"order, one hidden all along", "A1 B1 C1*",
         "hide A; hide B; unhide A; restore; show A1; hide C; unhide C; restore", "A1 C1* | b1!"},
        {"order, one still to be hidden", "A1@2 B1 C1*",
         "hide A; hide B; unhide B; restore; show B1; hide C; unhide C; restore", "A1@2 B1 C1* |"},
        {"order, one refused before", "A1 B1 C1 D1*",
         "on; refuse; off; obey; show C1; show B1; show D1; on; off", "A1 C1 B1 D1* |"},

        {"the user's: brought back", "A1 A2 B1*", "on; show A1; open C1; quit C; open A3; go 2; go 1",
         "B1 A1 A3* | a2!"},

        {"elsewhere: left alone", "A1@2 B1*", "on; on; go 1", ""},
        {"elsewhere: hidden on arrival", "A1@2 C1@2 B1*", "on; maximise A1; wait; go 1; go 2",
         "at 2: B1 | a1@2! c1@2!"},
        {"elsewhere: back on arrival", "C1@2 B1* A1@2 B2@2", "on; go 2; go 1; off; go 2",
         "at 2: B1 C1@2 A1@2 B2@2* |"},
        {"elsewhere: hidden again", "A1@2 B1*", "on; go 2; go 1; off; on; go 2", "at 2: B1 | a1@2!"},
        {"elsewhere: put away by the user", "A1@2 B1*", "on; minimise A1; go 2; off", "at 2: B1 | a1@2"},
        {"elsewhere: and brought back", "A1@2 B1*", "on; minimise A1; go 2; show A1; go 1; go 2",
         "at 2: B1 A1@2* |"},
        {"elsewhere: brought here by the user", "A1@2 B1*", "on; take A1; go 2; go 1", "A1 B1* |"},
        {"elsewhere: unhidden before", "A1@2 B1*", "hide A; unhide A; restore; go 2", "at 2: A1@2* B1 |"},
        {"elsewhere: no more hiding", "A1 C1@2 B1*", "on; stop; go 2", "at 2: C1@2* B1 | a1!"},
        {"elsewhere: the number of another", "A1@2 B1*", "on; quit A; open A1@2; go 2", "at 2: B1 A1@2* |"},

        {"under way: off", "A1 B1 A2 B2*", "busy; on; off; calm", ""},
        {"under way: another in front", "A1 A2 B1*", "on; busy; off; focus A1; on; calm", "B1* | a1! a2!"},

        {"the window manager ends: on and off", "A1 B1*", "dies; on; off; next", ""},
        {"the window manager ends: and shows all", "A1 B1*", "on; deaf; show A1; dies; next; hear",
         "B1* | a1!"},

        {"after a crash", "A1 B1 a2 C1 B2*", "on; crash; off", "B1 A1 C1 B2* | a2"},
        {"after a crash, before it was minimised", "A1 B1*", "busy; on; crash; off; calm", ""},
        {"the end, elsewhere, of one only", "A1 C1 B1*", "on; go 2; unhide A; restore; leave",
         "at 2: A1 B1 | c1!"},
    };
    for (const auto& [what, windows, steps, expected] : cases) {
        SCOPED_TRACE(what);
        Desktop desktop(windows);
        const auto before = desktop.picture();
        desktop.act(steps);
        EXPECT_EQ(desktop.picture(), *expected ? expected : before);
    }
}

TEST(HiddenWindowsTest, SendCommandsInASafeOrder) {
    const Case cases[] = {
        {"bottom to top, and those that stay in their turn", "b2 A1 B1 C1- A2 B3*", "on; off",
         "activate A1, raise B1, activate A2, raise B3, activate B3, unmark A1, unwatch A1, unmark A2, "
         "unwatch A2"},
        {"brought back, and not heard of yet", "A1 B1*", "on; deaf; show A1; off",
         "unmark A1, unwatch A1, raise B1, activate A1"},
        {"the end of another is heard late", "A1@2 B1*", "on; go 2; go 1; deaf; quit A; open A1@2; off; hear",
         "watch A1"},
        {"what is not minimised all the same", "A1 B1*", "refuse; on",
         "watch A1, mark A1, minimise A1, minimise A1, minimise A1, mark A1, conceal A1"},
        {"what is concealed, under another window manager", "A1# B1*", "on; next", "conceal A1"},
        {"what does not come back keeps the mark", "A1 B1*", "on; refuse; off",
         "activate A1, raise B1, activate B1, activate A1, activate B1, activate A1, activate B1, "
         "A window of \"A\" is not brought back by the window manager"},
        {"what did not come back, later", "A1 B1*", "on; refuse; off; obey; off",
         "activate A1, raise B1, activate B1, unmark A1, unwatch A1"},
        {"in tabs, which activation would turn over", "A1 B1 C1 B2*",
         "tiles; activates; on; show A1; show B2; off",
         "reveal A1, unmark A1, unwatch A1, raise A1, raise B1, reveal C1, unmark C1, unwatch C1, raise C1, "
         "raise B2, activate B2"},
        {"put away by the user before: left alone", "a1 a2@2 B1*", "on", ""},
        {"elsewhere: later", "A1@2 B1*", "on; go 2; go 1; off", "activate B1"},
        {"the focus left below, again", "A1 B1 C1*", "on; off; focus A1; focus C1; focus B1", "activate C1"},
        {"the focus by way of another", "A1 B1 C2 C1*", "on; off; focus B1; focus C2; focus A1",
         "activate C1"},
        {"the focus has been everywhere", "A1 B1 C1*", "on; off; focus B1; focus C1; focus A1", ""},
        {"the focus given away by the user", "A1 C2 C1*", "on; off; focus C2", ""},
        {"the focus after hiding again", "A1 B1 C1*", "on; off; on; focus A1", ""},
        {"moved along by mapping, and sent back", "A1 B1*", "maps; on; go 2; off; leave",
         "clearHidden A1, map A1, moveTo A1, unmark A1, unwatch A1"},
    };
    for (const auto& [what, windows, steps, sent] : cases) {
        SCOPED_TRACE(what);
        Desktop desktop(windows);
        desktop.act(steps);
        EXPECT_EQ(desktop.sent(), sent);
    }
}

} // namespace
} // namespace tavro
