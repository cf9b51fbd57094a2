#include "ui/preferences/Recorder.h"

#include "toolkit/Translation.h"
#include "ui/preferences/RecorderCocoa.h"

#include <QVBoxLayout>

namespace tavro {

Recorder::Recorder(const KeyboardShortcuts::Name& name, const QString& label, QWidget* parent)
    : ToogleButton(
          label, [this] { m_field->setFocus(); }, parent)
    , m_field(new RecorderCocoa(name, {}, this)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(m_field, &QLineEdit::textChanged, this, [this] { nameKeys(); });
    nameKeys();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addWidget(m_field);
}

// The field shows symbols, which keyboards do not have, nor do all voices read them.
void Recorder::nameKeys() {
    const auto keys = m_field->keyNames();
    setToolTip(keys.isEmpty() ? translated("Click here and press the keys") : keys);
    for (auto* widget : std::initializer_list<QWidget*>{this, m_field})
        widget->setAccessibleName(keys.isEmpty() ? text() : text() + ' ' + keys);
}

QSize Recorder::sizeHint() const {
    return withMargin(m_field->sizeHint());
}

} // namespace tavro
