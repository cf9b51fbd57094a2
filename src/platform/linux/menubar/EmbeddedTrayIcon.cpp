#include "platform/linux/menubar/EmbeddedTrayIcon.h"

#include "platform/linux/menubar/ToolkitMenu.h"

namespace tavro {

EmbeddedTrayIcon::EmbeddedTrayIcon(const Identity& identity, std::function<void(Click)> clicked)
    : m_clicked(std::move(clicked))
    , m_icon(std::make_unique<QSystemTrayIcon>()) {
    m_icon->setToolTip(identity.hint.isEmpty() ? identity.title : identity.title + '\n' + identity.hint);
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, m_icon.get(),
                     [this](auto reason) { activated(reason); });
}

// It may be the icon's own click that takes it away.
EmbeddedTrayIcon::~EmbeddedTrayIcon() {
    m_icon->disconnect();
    m_icon->setContextMenu(nullptr);
    m_icon->hide();
    m_icon.release()->deleteLater();
}

void EmbeddedTrayIcon::setMenu(std::shared_ptr<const Menu> menu, std::function<void()> opens) {
    m_menu = toolkitMenu(*menu);
    QObject::connect(m_menu.get(), &QMenu::aboutToShow, m_menu.get(), std::move(opens));
    m_icon->setContextMenu(m_menu.get());
}

void EmbeddedTrayIcon::activated(QSystemTrayIcon::ActivationReason reason) {
    const auto clicked = m_clicked; // which may end this icon
    switch (reason) {
    case QSystemTrayIcon::Trigger:
    case QSystemTrayIcon::DoubleClick: // the second of two quick clicks
        return clicked(Click::left);
    case QSystemTrayIcon::MiddleClick:
        return clicked(Click::middle);
    case QSystemTrayIcon::Context: // said besides, where there is a menu
        return m_menu ? void() : clicked(Click::right);
    case QSystemTrayIcon::Unknown:
        return;
    }
}

} // namespace tavro
