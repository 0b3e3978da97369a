/* Loaded into the sample host by `make run` when it serves the editor through Qt's VNC platform.
 * That platform listens on every network interface and has no option to choose one, and it asks
 * for no password: this turns a bind to "any address" into a bind to the loopback address, so the
 * editor is reachable from this machine only (an ssh tunnel brings it elsewhere). */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <netinet/in.h>
#include <string.h>
#include <sys/socket.h>

typedef int (*BindCall)(int, const struct sockaddr*, socklen_t);

/* Exported whatever the build's default visibility: the loader must find it before the C library's. */
__attribute__((visibility("default"))) int bind(int fd, const struct sockaddr* address, socklen_t length) {
  static BindCall next = NULL;
  if (next == NULL) next = (BindCall)dlsym(RTLD_NEXT, "bind");
  if (address != NULL && address->sa_family == AF_INET && length >= sizeof(struct sockaddr_in)) {
    struct sockaddr_in local;
    memcpy(&local, address, sizeof local);
    if (local.sin_addr.s_addr == htonl(INADDR_ANY)) {
      local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
      return next(fd, (const struct sockaddr*)&local, sizeof local);
    }
  }
  if (address != NULL && address->sa_family == AF_INET6 && length >= sizeof(struct sockaddr_in6)) {
    struct sockaddr_in6 local;
    memcpy(&local, address, sizeof local);
    if (memcmp(&local.sin6_addr, &in6addr_any, sizeof in6addr_any) == 0) {
      /* A dual-stack socket: 127.0.0.1 as an IPv4-mapped address, so IPv4 viewers still connect. */
      static const unsigned char mappedLoopback[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff, 127, 0, 0, 1};
      memcpy(&local.sin6_addr, mappedLoopback, sizeof mappedLoopback);
      return next(fd, (const struct sockaddr*)&local, sizeof local);
    }
  }
  return next(fd, address, length);
}
