#pragma once

#include "toolkit/core/Context.h"

namespace qgtk {

/** What one operation asks of servers: its time limit begins with it. */
class ServerAccess
{
public:
    /** The directories of a configuration file are asked when it names any, else those of the context's. */
    explicit ServerAccess(Context& context, const std::string& configurationFile = {})
        : network(context.configuration().connectSeconds, context.configuration().totalSeconds,
                  context.verifySettings.keepReplies ? &context.replies : nullptr),
          m_directories(context.configuration().directories)
    {
        if (configurationFile.empty())
            return;
        Configuration other = Configuration::read(configurationFile);
        if (!other.directories.empty())
            m_directories = std::move(other.directories);
    }

    /** The directories to ask when a certificate names none. */
    const std::vector<DirectoryEntry>& directories() const { return m_directories; }

    Network network;

private:
    std::vector<DirectoryEntry> m_directories;
};

} // namespace qgtk
