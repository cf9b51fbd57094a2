#include "platform/linux/process/LinuxAccessibility.h"

#include "toolkit/Translation.h"

#include <QAccessible>
#include <QAccessibleObject>

#include <utility>

namespace tavro {

namespace {

/// A notification as assistive technology sees one. It is in no window.
class Announcement final : public QAccessibleObject {
public:
    Announcement(QObject& object, QString text)
        : QAccessibleObject(&object)
        , m_text(std::move(text)) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? m_text : QString();
    }
    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override { return {}; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(qApp); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }

private:
    const QString m_text;
};

} // namespace

// Each is an object of its own: of one that it knows, a screen reader would say the name that it remembers.
void LinuxAccessibility::announce(const std::string& text) {
    if (!QAccessible::isActive())
        return; // nobody listens
    auto* announcement = new Announcement(m_announcer.emplace(), translated(text));
    QAccessible::registerAccessibleInterface(announcement); // which deletes it with its object
    QAccessibleEvent shows(announcement, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shows);
}

} // namespace tavro
