#pragma once

#include "popover/ContentView.h"

#include <QWidget>

#include <vector>

namespace tavro {

class CustomToogleButton;
class InAppAlertButton;
class SimpleToogleButton;

/// The popover's content.
class ContentWidget final : public QWidget {
public:
    explicit ContentWidget(const ContentView& view);

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeHeader();
    QWidget* makeRows();
    void scheduleRefresh();
    void refresh();
    void showBanner(const InAppAlert& alert);

    const ContentView m_view;
    CustomToogleButton* m_switch = nullptr;
    QWidget* m_optionRows = nullptr;
    std::vector<SimpleToogleButton*> m_rows;
    InAppAlertButton* m_banner = nullptr; // null while there is none
    bool m_isScheduled = false;
    std::vector<Observation> m_observations;
};

} // namespace tavro
