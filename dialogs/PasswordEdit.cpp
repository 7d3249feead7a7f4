#include "PasswordEdit.h"

#include <QSignalBlocker>

#include "Secret.h"

namespace {

/** Characters that fit without a new buffer: more than any field here admits. */
constexpr int reservedLength = 1100;

/** Characters that are put in and taken out again to overwrite the undo list of an ordinary password. */
constexpr int historyLength = 128;

/** References to a line edit's text while a copy of it is looked at: the edit's own and the copy. */
constexpr int unsharedReferences = 2;

} // namespace

PasswordEdit::PasswordEdit(QWidget* parent) : QLineEdit(parent)
{
    reserve();
}

PasswordEdit::~PasswordEdit()
{
    wipeText();
}

void PasswordEdit::wipeAndClear()
{
    wipeText();
    clear();
    reserve();
}

/**
 * Overwrites the characters where they lie, the unused rest of the buffer included. A text that someone else
 * holds too is left alone, for it is theirs.
 */
void PasswordEdit::wipeText() const
{
    QString held = text();
    if (held.data_ptr()->ref.atomic.loadRelaxed() != unsharedReferences)
        return;
    wipe(const_cast<QChar*>(held.constData()), static_cast<std::size_t>(held.capacity()) * sizeof(QChar));
}

/** Overwrites the undo list, which setText() empties without clearing it, and makes room for the next text.
 */
void PasswordEdit::reserve()
{
    const QSignalBlocker quiet(this);
    setText(QString(historyLength, QLatin1Char(' ')));
    clear();
    // Only an empty text that brings its room along is taken over as it is.
    QString room;
    room.reserve(reservedLength);
    setText(room);
}

WipedBytes::~WipedBytes()
{
    wipe(m_bytes.data(), static_cast<std::size_t>(m_bytes.capacity()));
}
