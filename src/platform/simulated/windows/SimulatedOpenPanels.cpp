#include "platform/simulated/windows/SimulatedOpenPanels.h"

#include <utility>

namespace tavro {

class SimulatedOpenPanels::Panel final : public OpenPanel, public std::enable_shared_from_this<Panel> {
public:
    Panel(SimulatedOpenPanels& panels, OpenPanelSettings settings)
        : settings(std::move(settings))
        , m_panels(panels) {}

    void begin(std::function<void(ModalResponse)> completionHandler) override {
        m_panels.m_journal.record("openPanel.begin", settings.title);
        completion = std::move(completionHandler);
        m_panels.m_shown = shared_from_this();
    }
    std::optional<std::filesystem::path> url() const override { return chosen; }
    void close() override {
        m_panels.m_journal.record("openPanel.close");
        if (m_panels.m_shown.get() == this)
            m_panels.m_shown.reset();
    }

    const OpenPanelSettings settings;
    std::function<void(ModalResponse)> completion;
    std::optional<std::filesystem::path> chosen;

private:
    SimulatedOpenPanels& m_panels;
};

std::shared_ptr<OpenPanel> SimulatedOpenPanels::openPanel(const OpenPanelSettings& settings) {
    return std::make_shared<Panel>(*this, settings);
}

// What waits for the user's decision holds the panel.
void SimulatedOpenPanels::endProcess() {
    if (m_shown)
        m_shown->completion = nullptr;
    m_shown.reset();
}

std::optional<OpenPanelSettings> SimulatedOpenPanels::shown() const {
    return m_shown ? std::optional(m_shown->settings) : std::nullopt;
}

void SimulatedOpenPanels::decide(ModalResponse response, std::optional<std::filesystem::path> file) {
    const auto panel = m_shown;
    if (!panel)
        return;
    panel->chosen = std::move(file);
    m_queue.async([response, completion = std::exchange(panel->completion, nullptr)] {
        if (completion)
            completion(response);
    });
    m_queue.runUntilIdle();
}

} // namespace tavro
