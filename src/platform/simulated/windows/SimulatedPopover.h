#pragma once

#include "platform/simulated/process/Journal.h"
#include "platform/windows/Popover.h"

namespace tavro {

/// A popover of the program under test. Only tests play a user who works elsewhere: they close it.
class SimulatedPopover final : public Popover {
public:
    explicit SimulatedPopover(Journal& journal)
        : m_journal(journal) {}

    void setContentSize(Size size) override;
    void setBehavior(PopoverBehavior behavior) override;
    void setAnimates(bool animates) override;
    void setContentView(std::shared_ptr<const View> view) override { m_contentView = std::move(view); }
    bool isShown() const override { return m_isShown; }
    void show(Rect positioningRect, const StatusBarButton& button, RectEdge preferredEdge) override;
    void makeKey() override;
    void performClose() override;
    void close() override;

    const std::shared_ptr<const View>& contentView() const { return m_contentView; }

private:
    Journal& m_journal;
    std::shared_ptr<const View> m_contentView;
    bool m_isShown = false;
};

} // namespace tavro
