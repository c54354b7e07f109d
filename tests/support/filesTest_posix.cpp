#include <QTest>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <fcntl.h>
#include <functional>
#include <grp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "support/appendFile.h"
#include "support/fileSystem.h"
#include "support/iniFile.h"
#include "support/paths.h"
#include "tools/testFiles.h"
#include "tools/testList.h"

// The calls as this program makes them. While a thread is `interrupting`, a signal interrupts every other call of its;
// the call `failing` fails. `beforeLock` happens once, before a thread locks a file.
namespace {

thread_local bool interrupting = false;
thread_local long failing = -1;
thread_local std::function<void()> beforeLock;

template <typename... Targument>
int call(long number, Targument... arguments) {
  thread_local bool interrupted = false;
  if (number == failing) {
    errno = EIO;
    return -1;
  }
  interrupted = interrupting && !interrupted;
  if (!interrupted) return static_cast<int>(syscall(number, arguments...));
  errno = EINTR;
  return -1;
}

}  // namespace

int close(int file) {
  const int closed = static_cast<int>(syscall(SYS_close, file));
  return failing == SYS_close ? call(failing) : closed;
}
int fcntl(int file, int command, ...) {
  va_list arguments;
  va_start(arguments, command);
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  if (beforeLock && command == F_OFD_SETLK) std::exchange(beforeLock, {})();
  return call(SYS_fcntl, file, command, argument);
}
int flock(int file, int operation) {
  if (beforeLock) std::exchange(beforeLock, {})();
  return call(SYS_flock, file, operation);
}
int fsync(int file) {
  return call(SYS_fsync, file);
}
ssize_t read(int file, void* bytes, size_t count) {
  return call(SYS_read, file, bytes, count);
}
ssize_t write(int file, const void* bytes, size_t count) {
  return call(SYS_write, file, bytes, count);
}

class TposixFilesTest : public QObject {
  Q_OBJECT
 private slots:
  void findsPathWithoutRegardToCase() {
    const TtestFolder folder;
    const auto found = [&] { return findPath(folder.path(), "DATA/eq.dat"); };
    writeBytes(folder / "data2/eq.dat", "x");
    QVERIFY(found() == folder / "DATA/eq.dat");
    writeBytes(folder / "data/x", "x");
    QVERIFY(found() == folder / "data/eq.dat");
    for (const char* name : {"data/eq.dat", "Data/EQ.dat", "DATA/eq.dat"}) {
      writeBytes(folder / name, "x");
      QVERIFY2(found() == folder / name, name);
    }
  }

  void cleanup() {
    interrupting = false;
    failing = -1;
    beforeLock = {};
  }

  void failedCallIsToldAndLeavesTheFile() {
    const TtestFolder folder;
    std::unique_ptr<TfileWriter> writer;
    const std::string half(40000, 'x');  // of the buffer
    const auto write = [&] { return writer->write(half); };
    const auto flush = [&] { return writer->flush(); };
    const auto close = [&] { return writer->close(); };
    for (const auto& [number, act] : std::initializer_list<std::pair<long, std::function<Toutcome()>>>{
             {SYS_write, write}, {SYS_write, flush}, {SYS_write, close}, {SYS_fsync, flush}, {SYS_close, close}}) {
      QVERIFY(diskFileSystem().create(folder / "new", {}, writer) && write());
      failing = number;
      const Toutcome outcome = act();
      failing = -1;
      QVERIFY(!outcome && diskFileSystem().remove(folder / "new"));
    }
    writeBytes(folder / "e.ini", "[A]\nB=1\n");
    std::string content;
    for (const auto& [number, end] :
         {std::pair(SYS_read, TreadResult::Tend::readFailed), {SYS_close, TreadResult::Tend::closeFailed}}) {
      failing = number;
      QCOMPARE(diskFileSystem().read(folder / "e.ini", content).end, end);
      TiniFile(folder / "e.ini").write("A", {{"B", "2"}});
      failing = -1;
      QCOMPARE(bytesOf(folder / "e.ini"), "[A]\nB=1\n");
    }
  }

  /// Whoever gets a lock late may hold a file that has lost its name to another one.
  void lockOfAFormerFileIsNone() {
    const TtestFolder folder;
    const auto replace = [&] {
      std::filesystem::rename(folder / "file", folder / "old");
      writeBytes(folder / "file", "new");
    };
    writeBytes(folder / "file", "former");
    beforeLock = replace;
    turnFileOver(folder / "file", folder / "old", 1);
    QCOMPARE(bytesOf(folder / "old"), "former");
    beforeLock = replace;
    const TlockResult locked = diskFileSystem().lock(folder / "file", false, {}, {});
    QVERIFY(locked.lock && diskFileSystem().lock(folder / "file", false, {}, {}).end == TlockResult::Tend::busy);
  }

  void replacedFileKeepsPermissionsAndLinkWhateverInterrupts() {
    const TtestFolder folder;
    writeBytes(folder / "real/file", "old");
    std::filesystem::permissions(folder / "real/file", std::filesystem::perms(0604));
    std::filesystem::create_symlink("real/file", folder / "link");
    std::string content;
    interrupting = true;
    QVERIFY(replaceFile(diskFileSystem(), folder / "link", "new"));
    QCOMPARE(diskFileSystem().read(folder / "link", content).end, TreadResult::Tend::done);
    interrupting = false;
    QVERIFY(std::filesystem::is_symlink(folder / "link"));
    QCOMPARE(bytesOf(folder / "real/file"), "new");
    QCOMPARE(std::filesystem::status(folder / "real/file").permissions(), std::filesystem::perms(0604));
  }

  void fileKeepsGroupWhenAMemberSavesIt() {
    constexpr uid_t owner = 4001;
    constexpr uid_t member = 4002;
    constexpr gid_t group = 4003;
    if (geteuid() != 0) QSKIP("Only root can save as another user");
    const TtestFolder folder;
    writeBytes(folder / "list/file", "old");
    for (const char* name : {"list", "list/file"}) {
      QCOMPARE(chown((folder / name).c_str(), owner, group), 0);
      QCOMPARE(chmod((folder / name).c_str(), 0770), 0);
    }
    QCOMPARE(chmod(folder.path().c_str(), 0755), 0);
    QVERIFY(setgroups(1, &group) == 0 && seteuid(member) == 0);
    const bool replaced{replaceFile(diskFileSystem(), folder / "list/file", "new")};
    QVERIFY(seteuid(0) == 0 && setgroups(0, nullptr) == 0);
    struct stat status {};
    QVERIFY(replaced && stat((folder / "list/file").c_str(), &status) == 0);
    QVERIFY(status.st_uid == member && status.st_gid == group);
  }

  void plantedNamesHarmNobodyAndHangNothing() {
    const TtestFolder folder;
    TfileSystem& files = diskFileSystem();
    std::string content;
    std::unique_ptr<TfileWriter> writer;
    writeBytes(folder / "outside", "kept");
    std::filesystem::create_symlink(folder / "outside", folder / "link");
    std::filesystem::create_symlink(folder / "missing", folder / "dangling");
    std::filesystem::create_symlink("circle", folder / "circle");
    std::filesystem::create_directory(folder / "folder");
    QCOMPARE(mkfifo((folder / "pipe").c_str(), 0666), 0);
    for (const char* name : {"link", "dangling", "circle", "folder", "pipe"}) {
      QVERIFY2(!files.create(folder / name, {}, writer) && !files.append(folder / name, writer), name);
      QVERIFY2(files.lock(folder / name, true, {}, {}).end == TlockResult::Tend::unavailable, name);
    }
    const std::string tooLong(300, 'x');
    for (const char* name : {"circle", "folder", "pipe", tooLong.c_str()}) {
      const bool isSomething = name == std::string_view("folder") || name == std::string_view("pipe");
      using enum TstampResult::Tend;
      QVERIFY2(files.stamp(folder / name).end == (isSomething ? notAFile : unknown), name);
      QVERIFY2(files.read(folder / name, content).end == TreadResult::Tend::notOpened, name);
    }
    QCOMPARE(files.read("/proc/self/status", content, 10).end, TreadResult::Tend::tooLarge);  // has no length
    QCOMPARE(appendToFile(folder / "pipe", "x", 100), TappendResult::failed);  // would hang without a reader
    QCOMPARE(bytesOf(folder / "outside"), "kept");
    QVERIFY(!std::filesystem::exists(folder / "missing"));
  }

  void lockEndsWithItsProcess() {
    const TtestFolder folder;
    const auto lockWithin = [&](int milliseconds) {
      return diskFileSystem().lock(folder / "lock", true, {}, std::chrono::milliseconds(milliseconds));
    };
    std::array<int, 2> ends{};
    char held = 0;
    QCOMPARE(pipe(ends.data()), 0);
    const pid_t other = fork();
    if (other == 0) {
      alarm(60);  // ends the process if nobody kills it
      const TlockResult result = lockWithin(0);
      while (write(ends[1], result.lock ? "1" : "0", 1) == 1) pause();
    }
    close(ends[1]);
    const ssize_t answered = read(ends[0], &held, 1);
    close(ends[0]);
    const TlockResult during = lockWithin(1);
    kill(other, SIGKILL);
    const TlockResult after = lockWithin(20000);
    QCOMPARE(waitpid(other, nullptr, 0), other);
    QVERIFY(answered == 1 && held == '1' && during.end == TlockResult::Tend::busy && after.lock);
  }
};
EQREC_TEST(TposixFilesTest);

#include "filesTest_posix.moc"
