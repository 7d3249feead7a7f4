#include "TestPki.h"

#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#include "toolkit/core/Base64.h"

using namespace samplepki;

const KeyPair& testKey(unsigned number)
{
    return KeyPool::key(KeyKind::Rsa2048, number);
}

TestPki::TestPki()
    : root(Authority::root(nameFromText(rootName), testKey(0))),
      ca(root.intermediate(nameFromText(caName), testKey(1)))
{}

Request TestPki::leaf()
{
    return {.subject = nameFromText(leafName), .key = testKey(2), .serial = "77"};
}

std::string pem(const Bytes& der, const std::string& label)
{
    std::string text = "-----BEGIN " + label + "-----\n";
    const std::string base64(qgtk::textOf(qgtk::base64Encode(qgtk::bytesOf(der))));
    for (std::size_t i = 0; i < base64.size(); i += 64)
        text += base64.substr(i, 64) + "\n";
    return text + "-----END " + label + "-----\n";
}

int runProgram(const std::vector<std::string>& arguments)
{
    std::vector<char*> list;
    for (const std::string& argument : arguments)
        list.push_back(const_cast<char*>(argument.c_str()));
    list.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failed = posix_spawnp(&child, list[0], &actions, nullptr, list.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed)
        throw std::runtime_error(arguments.front() + " is not installed");
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
