#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QStringList>
#include <QTableView>
#include <QTest>
#include <functional>
#include <memory>

#include "SelectCertDialog.h"

/** A work directory with a Korean and an English language pack in which each key has a text of its own. */
class LanguageFolder
{
public:
    LanguageFolder();

    /** Path of the directory. */
    QByteArray path() const;

    /** Text of a key in the Korean pack, which has Hangul in it, and in the English one. */
    static QString korean(const char* key) { return QStringLiteral("가나다 ") + QLatin1String(key); }
    static QString english(const char* key) { return QStringLiteral("text of ") + QLatin1String(key); }

    /** Takes a key out of both packs. */
    void drop(const char* key);

    /** Puts a text into the section "Message" of both packs. */
    void setMessage(const char* key, const char* text);

private:
    void write() const;

    QStringList m_ui;
    QStringList m_messages;
    QMap<QString, QString> m_own;
};

/** Message boxes that were asked for, as "title|text"; each is answered with Ok at once. */
class HeardMessages
{
public:
    HeardMessages();
    ~HeardMessages();
    HeardMessages(const HeardMessages&) = delete;
    HeardMessages& operator=(const HeardMessages&) = delete;

    /** What was heard since the last call. */
    QStringList take() { return std::exchange(m_heard, {}); }

private:
    QStringList m_heard;
};

/** "title|text" of the Korean pack: the form in which HeardMessages keeps a message. */
QString koreanMessage(const char* messageKey, const char* titleKey = "DLG_SELCERT_CAPITON");

/** A file dialog that answers with a path, empty for a cancelled one, and keeps what it was asked. */
class ChosenFile
{
public:
    explicit ChosenFile(const QString& path);
    ~ChosenFile();
    ChosenFile(const ChosenFile&) = delete;
    ChosenFile& operator=(const ChosenFile&) = delete;

    QStringList asked; ///< "caption|directory|filter"
};

/** Option records of a host, and the dialog that they are for. */
class DialogBench
{
public:
    DialogBench();

    /** A new dialog, run through SetInitOption, InitSetControl and Initalize, not yet on a medium. */
    SelectCertDialog& open();

    /** A further selection on the same dialog. */
    void reopen();

    /** open() and the start on the hard disk. */
    SelectCertDialog& openDisk();

    LanguageFolder folder;
    INITOPT init = {};
    std::unique_ptr<LOADSELECTCERTOPTION> load;
    std::unique_ptr<EXTRAOPTION> extra;
    std::unique_ptr<SelectCertDialog> dialog;
};

/** A widget of a window by its object name; fails the test when there is none. */
template <class Widget = QWidget>
Widget& child(const QWidget& window, const char* name)
{
    auto* found = window.findChild<Widget*>(QLatin1String(name));
    if (!found)
        qFatal("no widget %s", name);
    return *found;
}

/** Presses a button of a window with the mouse. */
void press(const QWidget& window, const char* button);

/** Clicks a row of a table, in its first column. */
void clickRow(const QTableView& table, int row);

/** Texts of a row of a table. */
QStringList rowTexts(const QTableView& table, int row);

/** Runs a step once a modal dialog, other than those there now, is shown and active. */
void whenShown(std::function<void(QDialog&)> step);
