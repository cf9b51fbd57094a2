#include "ui/preferences/Recorder.h"

#include "ui/preferences/RecorderCocoa.h"

#include <QVBoxLayout>

namespace tavro {

Recorder::Recorder(const KeyboardShortcuts::Name& name, const QString& label, QWidget* parent)
    : ToogleButton(
          label, [this] { m_field->setFocus(); }, parent)
    , m_field(new RecorderCocoa(name, {}, this)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_field->setAccessibleName(label);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addWidget(m_field);
}

QSize Recorder::sizeHint() const {
    return withMargin(m_field->sizeHint());
}

} // namespace tavro
