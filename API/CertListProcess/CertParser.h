#pragma once

#include <map>
#include <optional>
#include <string>

#include "LibFile.h"
#include "OperationLog.h"
#include "ToolkitBytes.h"
#include "quillgate/records.h"

/** The host's names of purposes by dotted policy OID. */
using OidNames = std::map<std::string, std::string>;

/**
 * What tells the parsers of the two stores apart. They run the same steps; hosts have come to rely on each of
 * the differences, log texts included.
 */
struct CertParserRules
{
    const char* tag;            /**< method tag of the log lines */
    const char* serialReason;   /**< reason in the line for a refused serial number */
    bool versionRequired;       /**< a certificate whose version can't be read is refused */
    bool subjectFilterCompares; /**< false: a subject filter refuses every certificate */
    bool validityHasText;       /**< a failure to read the validity is logged with the toolkit's text */
    bool oldStates;             /**< states 0, 1, 2 instead of 3, 4, 5 */
    bool policyRefusalHasText;  /**< the line for a refused policy closes with the last toolkit text */
    static const CertParserRules disk;
    static const CertParserRules memory;
};

/** What a store lends to a parser. */
struct CertParserSettings
{
    const LOADCERTOPT& option; /**< filters */
    SETOID* setOid;            /**< policy filter; null: none */
    int setOidCount;           /**< its entries */
    const OidNames& oidNames;  /**< beats the issuer configuration */
    const char* configPath;    /**< issuer configuration */
};

/**
 * Fills a record's descriptive fields from its signing certificate and applies the filters.
 *
 * The order of the steps is part of the behaviour: some read a field before the step that fills it. Holds the
 * toolkit's one loaded certificate from the first step to its end, so nothing else may use the context.
 */
class CertParser
{
public:
    /** Borrows everything; the record has nMediaType, nCertType and its bytes set and the rest zero. */
    CertParser(const CertParserRules& rules, const CertParserSettings& settings, const OperationLog& log,
               CERTINFO& record);

    /** 0, CLPERR_PASS for a filter, CLPERR_CERT_LOAD or CLPERR_CERT_FIELD. */
    int parse(BINSTR* signCert);

private:
    using Getter = int (*)(void*, int, char*);
    using Step = int (CertParser::*)();

    /** Size that the toolkit is told for each text. */
    static constexpr int TEXT_SIZE = 2048;

    int version();
    int serialNumber();
    int subject();
    int issuer();
    int issuerNames();
    int validity();
    int validityState();
    int publicKey();
    int policy();
    int policyFilter();
    int division();
    int extensions();

    void lookUpName(const char* section, const char* key, char (&name)[1024]);
    int fatal(const char* callee, int code) const;
    int refused(const char* reason) const;
    bool issuerRefused() const;
    bool subjectRefused() const;
    int read(Getter get);
    template <size_t N>
    int required(Getter get, const char* callee, char (&field)[N]);
    template <size_t N>
    int optional(Getter get, const char* callee, char (&field)[N]);

    const CertParserRules& m_rules;
    const CertParserSettings& m_settings;
    const OperationLog& m_log;
    CERTINFO& m_record;
    std::optional<ProfileText> m_issuerConfiguration; /**< once asked for */
    char m_text[TEXT_SIZE + 1]; /**< the last text read; one byte more than the toolkit is told */
};
