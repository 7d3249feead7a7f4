#include "Command.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

namespace {

[[noreturn]] void becomeProgram(const std::vector<std::string>& arguments, int output)
{
    std::vector<char*> pointers;
    for (const auto& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    unsetenv("LD_PRELOAD");
    execvp(pointers[0], pointers.data());
    _exit(127);
}

std::string readAll(int file)
{
    std::string text;
    std::array<char, 4096> buffer;
    for (ssize_t length = 0; (length = read(file, buffer.data(), buffer.size())) > 0;)
        text.append(buffer.data(), static_cast<std::size_t>(length));
    return text;
}

} // namespace

CommandResult runCommand(const std::vector<std::string>& arguments)
{
    int ends[2];
    if (pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child == 0)
        becomeProgram(arguments, ends[1]);
    close(ends[1]);
    std::string output = readAll(ends[0]);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, std::move(output)};
}
