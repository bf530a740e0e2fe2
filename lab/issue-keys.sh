#!/usr/bin/env bash
# Fills a new folder with ca.crt, the server's and the users' certificates (in printed text form) and keys, the key of
# the control channel and the web server's self-signed certificate. carol's certificate expired long ago.
set -euo pipefail

umask 077
mkdir "$1"
cd "$1"
export EASYRSA_BATCH=1 EASYRSA_ALGO=ec EASYRSA_CURVE=prime256v1 EASYRSA_PKI=$1/pki
easyrsa=/usr/share/easy-rsa/easyrsa
"$easyrsa" init-pki
EASYRSA_REQ_CN="Korvan lab" "$easyrsa" build-ca nopass
"$easyrsa" build-server-full server nopass
"$easyrsa" build-client-full alice nopass
"$easyrsa" build-client-full bob nopass
EASYRSA_REQ_CN=carol "$easyrsa" gen-req carol nopass
cat >expired.cnf <<'END'
[ca]
default_ca = expired
[expired]
database = pki/index.txt
serial = pki/serial
new_certs_dir = pki/certs_by_serial
certificate = pki/ca.crt
private_key = pki/private/ca.key
default_md = sha256
policy = name
x509_extensions = client
[name]
commonName = supplied
[client]
basicConstraints = CA:FALSE
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid
extendedKeyUsage = clientAuth
keyUsage = digitalSignature
END
openssl ca -batch -config expired.cnf -in pki/reqs/carol.req -out pki/issued/carol.crt \
    -startdate 20200101000000Z -enddate 20201231235959Z
cp pki/ca.crt pki/issued/*.crt pki/private/*.key .
openvpn --genkey tls-crypt tls.key
openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 3650 -subj "/CN=korvan.example" \
    -addext "subjectAltName=DNS:*.korvan.example" -keyout web.key -out web.crt
rm -r pki ca.key expired.cnf
