// Finding the socket of a connection the HTTP library is serving, for the faults that must act
// on the connection itself (drop, stall): the library hands handlers the request but not its
// socket. Linux only: the process's descriptors are listed from /proc/self/fd.
#pragma once

class FZnConnectionSocket
{
public:
	// The descriptor of the connected TCP socket whose local port is LocalPort and whose peer's
	// port is RemotePort; -1 when there is none.
	static int Find(int LocalPort, int RemotePort);
	// Ends the connection at once in both directions; the peer sees it close with nothing more sent.
	static void Drop(int Socket);
	// True when the peer has closed its side (or the connection failed).
	static bool PeerHasClosed(int Socket);
};
