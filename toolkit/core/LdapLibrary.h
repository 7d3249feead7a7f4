#pragma once

#include <ldap.h>
#include <openldap.h>

namespace qgtk {

/** The address of a function of libldap, which is loaded by the first call. Throws ModuleNotLoaded. */
void* ldapSymbol(const char* name);

/** A function of libldap, called like it. */
template <typename Signature>
class LdapFunction;

template <typename Result, typename... Arguments>
class LdapFunction<Result(Arguments...)>
{
public:
    explicit constexpr LdapFunction(const char* name) : m_name(name) {}

    Result operator()(Arguments... arguments) const
    {
        return reinterpret_cast<Result (*)(Arguments...)>(ldapSymbol(m_name))(arguments...);
    }

private:
    const char* m_name;
};

/*
 * libldap brings eleven libraries along, GnuTLS among them, and takes a millisecond to load, as long as all
 * else that a selection of a certificate waits for. Most processes never ask a directory, so it is not
 * linked: within this namespace its names stand for functions that are looked up when they are called.
 */
inline constexpr LdapFunction<decltype(::ber_sockbuf_ctrl)> ber_sockbuf_ctrl("ber_sockbuf_ctrl");
inline constexpr LdapFunction<decltype(::ldap_bv2escaped_filter_value)>
    ldap_bv2escaped_filter_value("ldap_bv2escaped_filter_value");
inline constexpr LdapFunction<decltype(::ldap_first_entry)> ldap_first_entry("ldap_first_entry");
inline constexpr LdapFunction<decltype(::ldap_free_urldesc)> ldap_free_urldesc("ldap_free_urldesc");
inline constexpr LdapFunction<decltype(::ldap_get_dn)> ldap_get_dn("ldap_get_dn");
inline constexpr LdapFunction<decltype(::ldap_get_option)> ldap_get_option("ldap_get_option");
inline constexpr LdapFunction<decltype(::ldap_get_values_len)> ldap_get_values_len("ldap_get_values_len");
inline constexpr LdapFunction<decltype(::ldap_init_fd)> ldap_init_fd("ldap_init_fd");
inline constexpr LdapFunction<decltype(::ldap_memfree)> ldap_memfree("ldap_memfree");
inline constexpr LdapFunction<decltype(::ldap_msgfree)> ldap_msgfree("ldap_msgfree");
inline constexpr LdapFunction<decltype(::ldap_next_entry)> ldap_next_entry("ldap_next_entry");
inline constexpr LdapFunction<decltype(::ldap_parse_result)> ldap_parse_result("ldap_parse_result");
inline constexpr LdapFunction<decltype(::ldap_result)> ldap_result("ldap_result");
inline constexpr LdapFunction<decltype(::ldap_search_ext)> ldap_search_ext("ldap_search_ext");
inline constexpr LdapFunction<decltype(::ldap_set_option)> ldap_set_option("ldap_set_option");
inline constexpr LdapFunction<decltype(::ldap_unbind_ext)> ldap_unbind_ext("ldap_unbind_ext");
inline constexpr LdapFunction<decltype(::ldap_url_parse)> ldap_url_parse("ldap_url_parse");
inline constexpr LdapFunction<decltype(::ldap_value_free_len)> ldap_value_free_len("ldap_value_free_len");

} // namespace qgtk
