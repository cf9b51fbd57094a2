#include "platform/linux/menubar/ToolkitMenu.h"

#include "toolkit/Translation.h"

namespace tavro {

std::unique_ptr<QMenu> toolkitMenu(const Menu& menu) {
    auto widget = std::make_unique<QMenu>();
    widget->setTitle(QString::fromStdString(menu.title));
    for (const auto& item : menu.items) {
        auto* action = widget->addAction(translated(item.title));
        action->setEnabled(item.action != nullptr);
        if (item.action)
            QObject::connect(action, &QAction::triggered, action, [run = item.action] { run(); });
    }
    return widget;
}

} // namespace tavro
