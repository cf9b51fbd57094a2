#pragma once

#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedMainQueue.h"
#include "platform/windows/OpenPanels.h"

namespace tavro {

/// The file chooser and its user.
class SimulatedOpenPanels final : public OpenPanels {
public:
    SimulatedOpenPanels(Journal& journal, SimulatedMainQueue& queue)
        : m_journal(journal)
        , m_queue(queue) {}
    SimulatedOpenPanels(const SimulatedOpenPanels&) = delete;
    SimulatedOpenPanels& operator=(const SimulatedOpenPanels&) = delete;
    ~SimulatedOpenPanels() override { endProcess(); }

    std::shared_ptr<OpenPanel> openPanel(const OpenPanelSettings& settings) override;

    /// What the panel on screen offers; none when there is none.
    std::optional<OpenPanelSettings> shown() const;
    /// The user takes a file, or with none the button "Open" without any.
    void userChooses(std::optional<std::filesystem::path> file) {
        decide(ModalResponse::ok, std::move(file));
    }
    void userCancels() { decide(ModalResponse::cancel, std::nullopt); }
    /// The process has ended, and took its panel along.
    void endProcess();

private:
    class Panel;
    void decide(ModalResponse response, std::optional<std::filesystem::path> file);

    Journal& m_journal;
    SimulatedMainQueue& m_queue;
    std::shared_ptr<Panel> m_shown;
};

} // namespace tavro
