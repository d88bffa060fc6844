#include "platform/linux/network/curl_downloader.h"

#include <chrono>
#include <cstddef>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/file_descriptor.h"
#include "platform/linux/processes/main_loop_task_queue.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr std::size_t limit = 2'097'152;

/// A server of the script beside this file.
class TlsServer {
 public:
  explicit TlsServer(const std::string& certificate = "valid")
      : program_({"/usr/bin/python3", "-B", TLS_SERVER, folder_.path(), certificate}) {
    std::istringstream(program_.readyLine()) >> port_ >> proxyPort_;
  }

  std::string host() const { return "localhost:" + port_; }
  std::string url(const std::string& target) const { return "https://" + host() + target; }
  std::string proxy() const { return "http://localhost:" + proxyPort_; }
  std::string authority() const { return folder_.path() + "/ca.pem"; }

 private:
  TemporaryFolder folder_;
  ServerProgram program_;
  std::string port_;
  std::string proxyPort_;
};

/// A port of the loopback interface that accepts connections, if it does, and never answers.
class SilentPort {
 public:
  explicit SilentPort(bool accepts) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(socket_.number(), generic, size), 0);
    EXPECT_TRUE(!accepts || listen(socket_.number(), 1) == 0);
    EXPECT_EQ(getsockname(socket_.number(), generic, &size), 0);
    host_ = "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
  }

  const std::string& host() const { return host_; }

 private:
  FileDescriptor socket_{socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
  std::string host_;
};

/// Starts the download and runs the main loop until its completion.
Result<HttpResponse> download(CurlDownloader& downloader, const std::string& url) {
  std::optional<Result<HttpResponse>> result;
  downloader.get(url, limit, [&](const Result<HttpResponse>& response) { result = response; });
  if (!runMainLoopUntil([&] { return result.has_value(); })) return Error{"No completion."};
  return *result;
}

Result<HttpResponse> download(const std::string& url, HttpsTransferOptions options) {
  MainLoopTaskQueue mainQueue;
  CurlDownloader downloader(mainQueue, {.transfer = std::move(options)});
  return download(downloader, url);
}

Result<HttpResponse> download(const TlsServer& server, const std::string& target) {
  return download(server.url(target), {.certificateAuthorities = server.authority()});
}

std::string errorOf(const Result<HttpResponse>& response) {
  return response ? "none, but status " + std::to_string(response.value().status)
                  : response.error().description;
}

std::string contentsOf(const std::string& path) {
  std::ifstream in(path);
  return {std::istreambuf_iterator<char>(in), {}};
}

MATCHER_P2(HasStatusAndBody, status, body, "") {
  if (!arg) {
    *result_listener << arg.error().description;
    return false;
  }
  return testing::ExplainMatchResult(status, arg.value().status, result_listener) &&
         testing::ExplainMatchResult(body, arg.value().body, result_listener);
}

TEST(CurlDownloader, GetsTheBodyInATaskOfTheMainThread) {
  const TlsServer server;
  MainLoopTaskQueue mainQueue;
  CurlDownloader downloader(mainQueue,
                            {.transfer = {.certificateAuthorities = server.authority()}});
  std::optional<std::thread::id> thread;
  std::string body;
  downloader.get(server.url("/text"), limit, [&](const Result<HttpResponse>& response) {
    thread = std::this_thread::get_id();
    body = response ? response.value().body : response.error().description;
  });
  EXPECT_EQ(thread, std::nullopt);
  runMainLoopUntil([&] { return thread.has_value(); });
  EXPECT_EQ(thread, std::this_thread::get_id());
  EXPECT_EQ(body, "some text");
}

TEST(CurlDownloader, GetsAChunkedBody) {
  EXPECT_THAT(download(TlsServer(), "/chunked"), HasStatusAndBody(200, "some text"));
}

TEST(CurlDownloader, SendsNothingThatIdentifiesTheUserAlsoAfterARedirectWithACookie) {
  const TlsServer server;
  const std::string request = "GET /request HTTP/1.1\r\nHost: " + server.host() +
                              "\r\nUser-Agent: Quillmar\r\nAccept: */*\r\nAccept-Encoding: ";
  EXPECT_THAT(
      download(server, "/redirect?1"),
      HasStatusAndBody(200, AllOf(StartsWith(request), Not(HasSubstr("Cookie")),
                                  Not(HasSubstr("Referer")), Not(HasSubstr("Authorization")))));
}

TEST(CurlDownloader, ReportsTheStatusOfARefusal) {
  const TlsServer server;
  EXPECT_THAT(download(server, "/missing"), HasStatusAndBody(404, "no such page"));
  EXPECT_THAT(download(server, "/error"), HasStatusAndBody(500, ""));
}

TEST(CurlDownloader, AReplyMayHaveNoBody) {
  EXPECT_THAT(download(TlsServer(), "/empty"), HasStatusAndBody(204, ""));
}

TEST(CurlDownloader, AReplyThatIsNotHttpHasNoStatus) {
  EXPECT_THAT(download(TlsServer(), "/no-http"), HasStatusAndBody(0, ""));
}

TEST(CurlDownloader, ABodyOfTheMaximumSizeIsComplete) {
  EXPECT_THAT(download(TlsServer(), "/size?" + std::to_string(limit)),
              HasStatusAndBody(200, std::string(limit, 'x')));
}

TEST(CurlDownloader, ALongerBodyIsCutOffOneByteAfterTheMaximum) {
  const TlsServer server;
  for (const std::size_t size : {limit + 1, limit + 100'000}) {
    EXPECT_THAT(download(server, "/size?" + std::to_string(size)),
                HasStatusAndBody(200, std::string(limit + 1, 'x')))
        << size;
  }
}

TEST(CurlDownloader, AnEndlessBodyIsCutOff) {
  EXPECT_THAT(download(TlsServer(), "/endless"), HasStatusAndBody(200, std::string(limit + 1, 0)));
}

/// The process's largest use of memory since resetPeakMemory(), in KiB.
long peakMemory() {
  std::istringstream status(contentsOf("/proc/self/status"));
  for (std::string word; status >> word;) {
    long size = 0;
    if (word == "VmHWM:" && status >> size) return size;
  }
  ADD_FAILURE() << "The kernel does not tell the use of memory.";
  return 0;
}

void resetPeakMemory() {
  std::ofstream("/proc/self/clear_refs") << 5;
}

TEST(CurlDownloader, ACompressedBodyIsNotUnpackedBeyondTheMaximum) {
  const TlsServer server;
  // Loads the library.
  ASSERT_THAT(download(server, "/text"), HasStatusAndBody(200, "some text"));
  resetPeakMemory();
  const long before = peakMemory();
  EXPECT_THAT(download(server, "/bomb"), HasStatusAndBody(200, std::string(limit + 1, 0)));
  // The address sanitizer needs some tens of MiB of its own.
  EXPECT_LT(peakMemory() - before, 48 << 10);
}

TEST(CurlDownloader, ABrokenCompressionIsAnError) {
  const TlsServer server;
  EXPECT_THAT(errorOf(download(server, "/broken-gzip")),
              StartsWith("The download from “" + server.host() + "” failed: "));
}

TEST(CurlDownloader, FollowsFiveRedirectsAndNoMore) {
  const TlsServer server;
  EXPECT_THAT(download(server, "/redirect?5"),
              HasStatusAndBody(200, StartsWith("GET /request HTTP")));
  const std::string error = "The server “" + server.host() + "” redirected the download too often.";
  EXPECT_EQ(errorOf(download(server, "/redirect?6")), error);
  EXPECT_EQ(errorOf(download(server, "/loop")), error);
}

TEST(CurlDownloader, FollowsARedirectToAnAddressThatIsNotEscaped) {
  EXPECT_THAT(download(TlsServer(), "/redirect-to?/request/%C3%A9%20x"),
              HasStatusAndBody(200, StartsWith("GET /request/%c3%a9%20x HTTP")));
}

TEST(CurlDownloader, RefusesARedirectToAnotherProtocol) {
  const TlsServer server;
  for (const char* address : {"http://localhost/", "file:///etc/hostname", "ftp://localhost/"}) {
    EXPECT_EQ(errorOf(download(server, std::string("/redirect-to?") + address)),
              "The download leads to an address that does not begin with “https:”.")
        << address;
  }
}

TEST(CurlDownloader, RefusesAnAddressOfAnotherProtocol) {
  for (const char* address : {"http://localhost/", "file:///etc/hostname", "HTTP://localhost/"}) {
    EXPECT_EQ(errorOf(download(address, {})),
              "The download leads to an address that does not begin with “https:”.");
  }
}

TEST(CurlDownloader, RefusesCredentialsInTheAddress) {
  const TlsServer server;
  const std::string error =
      "The address contains a user name or a password, which Quillmar does not send.";
  const std::string withUser = "https://user:secret@" + server.host() + "/request";
  EXPECT_EQ(errorOf(download(withUser, {.certificateAuthorities = server.authority()})), error);
  EXPECT_EQ(errorOf(download(server, "/redirect-to?" + withUser)), error);
}

TEST(CurlDownloader, RefusesAnAddressThatIsNotValid) {
  for (const char* address : {"https://", "https://localhost:port/", "https://a host/x"}) {
    EXPECT_EQ(errorOf(download(address, {})), "The address is not valid.") << address;
  }
}

struct BadCertificate {
  std::string kind;
  std::string reason;
};

class BadCertificateTest : public testing::TestWithParam<BadCertificate> {};

TEST_P(BadCertificateTest, IsRefusedWithTheReason) {
  const TlsServer server(GetParam().kind);
  EXPECT_EQ(
      errorOf(download(server, "/text")),
      "The server “" + server.host() + "” could not prove its identity. " + GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    CurlDownloader, BadCertificateTest,
    testing::Values(
        BadCertificate{"expired", "SSL certificate problem: certificate has expired."},
        BadCertificate{"wrong-host",
                       "SSL: no alternative certificate subject name matches target host name "
                       "'localhost'."},
        BadCertificate{"self-signed", "SSL certificate problem: self-signed certificate."}),
    [](const auto& test) {
      std::string name = test.param.kind;
      std::erase(name, '-');
      return name;
    });

TEST(CurlDownloader, TrustsTheAuthoritiesOfTheSystemOnly) {
  const TlsServer server;
  EXPECT_THAT(errorOf(download(server.url("/text"), {})),
              StartsWith("The server “" + server.host() + "” could not prove its identity. "));
}

TEST(CurlDownloader, AConnectionThatEndsEarlyIsAnError) {
  const TlsServer server;
  for (const char* target : {"/cut", "/cut-chunks", "/nothing"}) {
    EXPECT_EQ(errorOf(download(server, target)),
              "The server “" + server.host() +
                  "” closed the connection before the download was complete.")
        << target;
  }
}

TEST(CurlDownloader, ChunksThatAreNotValidAreAnError) {
  const TlsServer server;
  EXPECT_THAT(errorOf(download(server, "/bad-chunks")),
              StartsWith("The download from “" + server.host() + "” failed: "));
}

TEST(CurlDownloader, AHostThatDoesNotExistIsAnError) {
  EXPECT_EQ(errorOf(download("https://nowhere.invalid/pack.json", {})),
            "The server “nowhere.invalid” was not found.");
}

TEST(CurlDownloader, AHostThatRefusesTheConnectionIsAnError) {
  const SilentPort port(false);
  EXPECT_THAT(errorOf(download("https://" + port.host() + "/pack.json", {})),
              StartsWith("The download from “" + port.host() + "” failed: Failed to connect to "));
}

TEST(CurlDownloader, AHandshakeThatNeverCompletesTimesOut) {
  const SilentPort port(true);
  EXPECT_EQ(errorOf(download("https://" + port.host() + "/",
                             {.connectTimeout = std::chrono::milliseconds(100)})),
            "The server “" + port.host() + "” did not answer in time.");
}

TEST(CurlDownloader, AStalledServerTimesOut) {
  const TlsServer server;
  for (const char* target : {"/stalled", "/stalled-body"}) {
    EXPECT_EQ(errorOf(download(server.url(target), {.certificateAuthorities = server.authority(),
                                                    .stallTimeout = std::chrono::seconds(1)})),
              "The server “" + server.host() + "” did not answer in time.")
        << target;
  }
}

TEST(CurlDownloader, ARedirectWithAnEndlessBodyTimesOut) {
  const TlsServer server;
  EXPECT_EQ(errorOf(download(server.url("/endless-redirect"),
                             {.certificateAuthorities = server.authority(),
                              .totalTimeout = std::chrono::milliseconds(500)})),
            "The server “" + server.host() + "” did not answer in time.");
}

TEST(CurlDownloader, AnEndlessHeadIsAnError) {
  const TlsServer server;
  EXPECT_THAT(errorOf(download(server, "/endless-head")),
              StartsWith("The download from “" + server.host() + "” failed: "));
}

TEST(CurlDownloader, UsesTheProxyOfTheEnvironment) {
  const TlsServer server;
  for (const char* variable : {"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"}) {
    // Nothing listens on this port of the host, but the proxy leads elsewhere.
    EXPECT_THAT(download("https://localhost:1/text",
                         withProxyOf({{{variable, server.proxy()}}},
                                     {.certificateAuthorities = server.authority()})),
                HasStatusAndBody(200, "some text"))
        << variable;
  }
}

TEST(CurlDownloader, BypassesTheProxyForHostsInNoProxy) {
  const TlsServer server;
  for (const char* variable : {"no_proxy", "NO_PROXY"}) {
    const auto options = withProxyOf({{{"https_proxy", server.proxy()}, {variable, "localhost"}}},
                                     {.certificateAuthorities = server.authority()});
    // Only the proxy would answer for this port.
    EXPECT_THAT(errorOf(download("https://localhost:1/text", options)),
                HasSubstr("Failed to connect to localhost port 1"))
        << variable;
  }
}

TEST(CurlDownloader, IgnoresTheProxyVariablesOfTheProcess) {
  g_setenv("https_proxy", "http://localhost:2", true);
  const TlsServer server;
  EXPECT_THAT(download(server, "/text"), HasStatusAndBody(200, "some text"));
  g_unsetenv("https_proxy");
}

bool isLoaded(const char* library) {
  return dlopen(library, RTLD_LAZY | RTLD_NOLOAD) != nullptr;
}

TEST(CurlDownloaderDeathTest, LoadsTheLibraryWithTheFirstDownload) {
  // In a process in which no other test has loaded it.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto loadAndExit = [] {
    MainLoopTaskQueue mainQueue;
    CurlDownloader downloader(mainQueue, {});
    const bool isLoadedBefore = isLoaded(CurlLibrary::defaultName);
    (void)download(downloader, "https://localhost:1/");
    _exit(!isLoadedBefore && isLoaded(CurlLibrary::defaultName) ? 0 : 1);
  };
  EXPECT_EXIT(loadAndExit(), testing::ExitedWithCode(0), "");
}

TEST(CurlDownloader, WithoutTheLibraryTheErrorNamesIt) {
  MainLoopTaskQueue mainQueue;
  CurlDownloader downloader(mainQueue, {.library = "libmissing.so.4"});
  EXPECT_EQ(errorOf(download(downloader, "https://localhost:1/")),
            "Quillmar cannot download files, because the library libcurl could not be loaded "
            "(libmissing.so.4: cannot open shared object file: No such file or directory).");
}

TEST(CurlDownloader, AFifthDownloadCompletesWhileFourStall) {
  std::vector<std::function<void()>> threads;
  MainLoopTaskQueue mainQueue;
  CurlDownloader downloader(
      mainQueue, {.library = "libmissing.so.4", .startThread = [&](std::function<void()> task) {
                    threads.push_back(std::move(task));
                    return true;
                  }});
  std::vector<int> completed;
  for (int i = 0; i < 5; ++i) {
    downloader.get("https://localhost/", limit,
                   [&completed, i](const Result<HttpResponse>&) { completed.push_back(i); });
  }
  ASSERT_EQ(threads.size(), 5U);
  threads.back()();
  runMainLoopWhileReady();
  EXPECT_EQ(completed, std::vector{4});
}

TEST(CurlDownloader, DestroysTheCompletionOnTheMainThread) {
  MainLoopTaskQueue mainQueue;
  std::optional<std::thread::id> thread;
  const auto recordThread = [&](const int*) { thread = std::this_thread::get_id(); };
  std::function<void()> start;
  {
    CurlDownloader downloader(
        mainQueue, {.library = "libmissing.so.4", .startThread = [&](std::function<void()> task) {
                      start = std::move(task);
                      return true;
                    }});
    const std::shared_ptr<const int> owned(nullptr, recordThread);
    downloader.get("https://localhost/", limit, [owned](const Result<HttpResponse>&) {});
  }
  // The thread still has its task when the main thread has called the completion.
  std::thread worker([&] { start(); });
  worker.join();
  runMainLoopWhileReady();
  EXPECT_EQ(thread, std::this_thread::get_id());
  start = nullptr;
}

TEST(CurlDownloader, WithoutAThreadEveryDownloadFails) {
  MainLoopTaskQueue mainQueue;
  CurlDownloader downloader(mainQueue, {.startThread = [](const auto&) { return false; }});
  std::vector<std::string> errors;
  for (int i = 0; i < 6; ++i) {
    downloader.get("https://localhost/", limit, [&](const Result<HttpResponse>& response) {
      errors.push_back(errorOf(response));
    });
  }
  runMainLoopWhileReady();
  EXPECT_EQ(errors, std::vector<std::string>(
                        6,
                        "Quillmar could not start a download, because the system cannot create "
                        "another thread."));
}

TEST(CurlDownloader, RunningDownloadsOutliveTheDownloader) {
  const TlsServer server;
  MainLoopTaskQueue mainQueue;
  std::optional<std::string> body;
  CurlDownloader(mainQueue, {.transfer = {.certificateAuthorities = server.authority()}})
      .get(server.url("/text"), limit,
           [&](const Result<HttpResponse>& response) { body = response.value().body; });
  runMainLoopUntil([&] { return body.has_value(); });
  EXPECT_EQ(body, "some text");
}

}  // namespace
}  // namespace quillmar
