#pragma once

#include <deque>

#include "toolkit/core/TokenSession.h"

namespace qgtk {

/** Attributes that an object is made with or found by. Bytes stay the caller's until it is used. */
class TokenAttributes
{
public:
    explicit TokenAttributes(CK_OBJECT_CLASS kind) { addNumber(CKA_CLASS, kind); }

    void addBytes(CK_ATTRIBUTE_TYPE type, ByteView bytes);
    void addNumber(CK_ATTRIBUTE_TYPE type, CK_ULONG number);
    void addFlag(CK_ATTRIBUTE_TYPE type, bool flag);

    CK_ATTRIBUTE* data() const { return m_attributes.data(); }
    CK_ULONG count() const { return m_attributes.size(); }

private:
    mutable std::vector<CK_ATTRIBUTE> m_attributes;
    std::deque<CK_ULONG> m_numbers; // a deque: attributes point into it
};

/** The objects with these attributes, oldest handle first. Private ones are seen by the user alone. */
std::vector<CK_OBJECT_HANDLE> findObjects(const TokenSession& session, const TokenAttributes& attributes);

/** An attribute's bytes; none when the object lacks it. Throws ModuleFailed when it is not to be read. */
SecretBytes readAttribute(const TokenSession& session, CK_OBJECT_HANDLE object, CK_ATTRIBUTE_TYPE type);

/** Makes an object. Throws TokenReadOnly, TokenFull, ModuleFailed. */
CK_OBJECT_HANDLE createObject(const TokenSession& session, const TokenAttributes& attributes);

void destroyObject(const TokenSession& session, CK_OBJECT_HANDLE object);

/** Objects that are taken back unless all of them have been made. */
class NewObjects
{
public:
    explicit NewObjects(const TokenSession& session) : m_session(session) {}
    ~NewObjects();
    NewObjects(const NewObjects&) = delete;
    NewObjects& operator=(const NewObjects&) = delete;

    void create(const TokenAttributes& attributes);

    /** Takes the object that a function makes. */
    template <typename Make>
    CK_OBJECT_HANDLE add(Make&& make)
    {
        m_objects.reserve(m_objects.size() + 1);
        m_objects.push_back(make());
        return m_objects.back();
    }

    void keep() { m_objects.clear(); }

private:
    const TokenSession& m_session;
    std::vector<CK_OBJECT_HANDLE> m_objects;
};

} // namespace qgtk
