#include "tests/cli/run_program.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <thread>

#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

void redirect(int descriptor, const std::string& file, int flags) {
  const int opened = open(file.c_str(), flags, 0600);
  if (opened < 0 || dup2(opened, descriptor) < 0) {
    _exit(126);
  }
}

[[noreturn]] void becomeProgram(std::vector<std::string> arguments, const ProgramSetup& setup,
                                const TempDir& files) {
  redirect(STDIN_FILENO, files.file("in"), O_RDONLY);
  redirect(STDOUT_FILENO, setup.outFile.empty() ? files.file("out") : setup.outFile,
           O_WRONLY | O_CREAT);
  redirect(STDERR_FILENO, files.file("err"), O_WRONLY | O_CREAT);
  for (const std::string& variable : setup.environment) {
    const std::size_t equals = variable.find('=');
    setenv(variable.substr(0, equals).c_str(), variable.substr(equals + 1).c_str(), 1);
  }
  if (!setup.workingDirectory.empty() && chdir(setup.workingDirectory.c_str()) != 0) {
    _exit(126);
  }
  if (setup.fileSizeLimit > 0) {
    const auto bytes = static_cast<rlim_t>(setup.fileSizeLimit);
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  arguments.insert(arguments.begin(), ZEL_PROGRAM);
  if (setup.closedStream >= 0) {
    close(setup.closedStream);
  }
  std::vector<char*> pointers;
  for (std::string& argument : arguments) {
    pointers.push_back(argument.data());
  }
  pointers.push_back(nullptr);
  if (setup.memoryLimit > 0) {
    const auto bytes = static_cast<rlim_t>(setup.memoryLimit);
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_AS, &limit);
  }
  execv(ZEL_PROGRAM, pointers.data());
  _exit(127);
}

}  // namespace

ProgramRun runProgram(const std::vector<std::string>& arguments, const ProgramSetup& setup) {
  const TempDir files;
  writeFile(files.file("in"), setup.standardInput);
  const pid_t child = fork();
  if (child == 0) {
    becomeProgram(arguments, setup, files);
  }
  if (setup.killSignal != 0) {
    std::this_thread::sleep_for(std::chrono::milliseconds(setup.killDelay));
    kill(child, setup.killSignal);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ProgramRun run;
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  run.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  run.out = readFile(files.file("out"));
  run.err = readFile(files.file("err"));
  return run;
}

}  // namespace zel::test
