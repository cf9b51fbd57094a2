#pragma once

#include <QPushButton>

class QKeyEvent;

namespace tavro {

/// Clicks the button for Return and Enter, as users expect of more than Space; whether it was one of them.
bool pressWithReturn(QAbstractButton& button, const QKeyEvent& event);

/// The toolkit's own with that, and without the looks of a dialog's default button.
class PushButton final : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace tavro
