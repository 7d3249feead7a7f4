#pragma once

#include <functional>
#include <map>

#include "Bench.h"
#include "Samples.h"
#include "quillgate/algorithms.h"

/** An operation that takes foreign bytes, and how it is called right. */
struct Row
{
    std::string operation; /**< name of the flat function, or of the operation that none reaches */
    /** Prepares a fresh or a used context and gives a right call. */
    std::function<RightCall(const Bench&, const Samples&)> call;
    std::string variant = {}; /**< tells the rows of one operation apart */
};

/** All rows. */
const std::vector<Row>& allRows();

void addCertificateRows(std::vector<Row>& rows);
void addKeyRows(std::vector<Row>& rows);
void addMessageRows(std::vector<Row>& rows);
void addProtocolRows(std::vector<Row>& rows);
void addTokenRows(std::vector<Row>& rows);
void addCryptoRows(std::vector<Row>& rows);
void addUtilityRows(std::vector<Row>& rows);

/** The operations that have no row, flat functions by their names and others by their own, each with the
 * reason. */
const std::map<std::string, std::string>& operationsWithoutRow();

/** Has a context trust the samples' root, know their authorities, and look for no revocation. */
void trustAuthorities(const Bench& bench, const Samples& samples);
void trust(const Bench& bench, const Sample& root, const Sample& authorities);

/** Gives a context the samples' key and initial value. */
void setSymmetricKey(const Bench& bench, const Samples& samples);

/** The hash of what is signed and stamped. */
inline const Argument theHash = argument::number(QG_HASH_SHA256);

/** Nobody listens there. */
inline constexpr const char* nobody = "127.0.0.1";
inline constexpr int nobodysPort = 1;
inline const Argument noHost = argument::fixed(nobody);
inline const Argument noPort = argument::number(nobodysPort);
inline constexpr const char* nobodysUrl = "http://127.0.0.1:1/service";
inline constexpr const char* nobodysDirectory = "ldap://127.0.0.1:1/o=Sample,c=KR?cACertificate";

/** What operations answer that came as far as to ask a server. */
constexpr int unreachable = static_cast<int>(qgtk::Code::ServerUnreachable);
