#include "ZnConnectionSocket.h"

#include <arpa/inet.h>
#include <dirent.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>

namespace
{
int PortOf(const sockaddr_storage& Address)
{
	if (Address.ss_family == AF_INET)
	{
		return ntohs(reinterpret_cast<const sockaddr_in&>(Address).sin_port);
	}
	if (Address.ss_family == AF_INET6)
	{
		return ntohs(reinterpret_cast<const sockaddr_in6&>(Address).sin6_port);
	}
	return -1;
}
} // namespace

int FZnConnectionSocket::Find(int LocalPort, int RemotePort)
{
	DIR* Descriptors = opendir("/proc/self/fd");
	if (!Descriptors)
	{
		return -1;
	}
	int Found = -1;
	while (dirent* Entry = readdir(Descriptors))
	{
		char* End = nullptr;
		const long Fd = std::strtol(Entry->d_name, &End, 10);
		if (End == Entry->d_name || *End != '\0' || Fd == dirfd(Descriptors))
		{
			continue;
		}
		sockaddr_storage Local{};
		sockaddr_storage Peer{};
		socklen_t LocalLength = sizeof(Local);
		socklen_t PeerLength = sizeof(Peer);
		if (getsockname(int(Fd), reinterpret_cast<sockaddr*>(&Local), &LocalLength) != 0 ||
			getpeername(int(Fd), reinterpret_cast<sockaddr*>(&Peer), &PeerLength) != 0)
		{
			continue;
		}
		if (PortOf(Local) == LocalPort && PortOf(Peer) == RemotePort)
		{
			Found = int(Fd);
			break;
		}
	}
	closedir(Descriptors);
	return Found;
}

void FZnConnectionSocket::Drop(int Socket)
{
	if (Socket >= 0)
	{
		shutdown(Socket, SHUT_RDWR);
	}
}

bool FZnConnectionSocket::PeerHasClosed(int Socket)
{
	pollfd Poll{Socket, POLLIN | POLLRDHUP, 0};
	if (poll(&Poll, 1, 0) <= 0)
	{
		return false;
	}
	if (Poll.revents & (POLLRDHUP | POLLHUP | POLLERR | POLLNVAL))
	{
		return true;
	}
	char Byte;
	return recv(Socket, &Byte, 1, MSG_PEEK | MSG_DONTWAIT) == 0;
}
