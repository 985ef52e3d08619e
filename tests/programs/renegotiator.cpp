// A server on loopback that comes with another certificate half-way: it encrypts its one connection with
// TLS 1.2, renegotiates as soon as something has arrived, and says "again" behind that. Its arguments are the
// files that begin and go on, each with a certificate and its key. It prints its port, and ends with the
// connection or after a minute.
#include <arpa/inet.h>
#include <cstdio>
#include <openssl/ssl.h>
#include <sys/socket.h>
#include <unistd.h>

int main(int count, char** arguments) {
    if (count != 3) {
        return 1;
    }
    alarm(60);
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* const place = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener, place, length) != 0 || listen(listener, 1) != 0 ||
        getsockname(listener, place, &length) != 0) {
        return 1;
    }
    std::printf("%d\n", ntohs(address.sin_port));
    std::fflush(stdout);

    SSL_CTX* const context = SSL_CTX_new(TLS_server_method());
    SSL_CTX_set_max_proto_version(context, TLS1_2_VERSION);
    SSL_CTX_set_options(context,
                        SSL_OP_NO_SESSION_RESUMPTION_ON_RENEGOTIATION); // it would need no certificate
    SSL_CTX_clear_mode(context, SSL_MODE_AUTO_RETRY);                   // a handshake ends a read
    SSL* const connection = SSL_new(context);
    const auto use = [connection](const char* file) {
        return SSL_use_certificate_file(connection, file, SSL_FILETYPE_PEM) == 1 &&
               SSL_use_PrivateKey_file(connection, file, SSL_FILETYPE_PEM) == 1;
    };
    char byte = 0;
    if (!use(arguments[1]) || SSL_set_fd(connection, accept(listener, nullptr, nullptr)) != 1 ||
        SSL_accept(connection) != 1 || SSL_read(connection, &byte, 1) != 1 || !use(arguments[2]) ||
        SSL_renegotiate(connection) != 1 || SSL_do_handshake(connection) != 1) {
        return 1;
    }
    while (SSL_renegotiate_pending(connection) != 0) {
        const int result = SSL_read(connection, &byte, 1);
        if (result <= 0 && SSL_get_error(connection, result) != SSL_ERROR_WANT_READ) {
            return 1;
        }
    }
    SSL_write(connection, "again\r\n", 7);
    SSL_read(connection, &byte, 1);
    return 0;
}
