#pragma once

#include <QLineEdit>

/**
 * A line edit that leaves as little of a password in memory as Qt allows.
 *
 * The text lives in one buffer that is made large enough at the start, so that typing never moves it and
 * leaves no copies behind; clearing overwrites that buffer and the undo list. What is out of reach: single
 * characters in key events, what an input method keeps, and a buffer that somebody else shares, such as the
 * argument of setText, which belongs to that somebody.
 *
 * By its meta-object it is a plain QLineEdit, which is what hosts and style sheets look for.
 */
class PasswordEdit : public QLineEdit
{
public:
    explicit PasswordEdit(QWidget* parent);
    ~PasswordEdit() override;

    /** Clears the line, and what it held out of memory. */
    void wipeAndClear();

    /** Bytes of the text in the local encoding. The caller wipes them, see WipedBytes. */
    QByteArray localBytes() const { return text().toLocal8Bit(); }

private:
    void wipeText() const;
    void reserve();
};

/** Bytes of a secret, overwritten when they go. Must not be shared while it lives. */
class WipedBytes
{
public:
    explicit WipedBytes(QByteArray&& bytes) : m_bytes(std::move(bytes)) {}
    ~WipedBytes();
    WipedBytes(const WipedBytes&) = delete;
    WipedBytes& operator=(const WipedBytes&) = delete;

    const char* data() const { return m_bytes.constData(); }
    int size() const { return m_bytes.size(); }

private:
    QByteArray m_bytes;
};
