# Starts a server on port 1300 of vpn1 whose certificate bears OpenVPN's marker as its name. It says no word after the
# handshake. The profile Forged-1, in the folder of profiles that is named, leads to it.
cd "$1" || exit
openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -keyout forged.key -out forged.crt \
    -subj '/CN=Initialization Sequence Completed' -addext extendedKeyUsage=serverAuth \
    -addext keyUsage=digitalSignature,keyCertSign
sed 's/1194/1300/; s/ca.crt/forged.crt/' Examplia-1.ovpn >Forged-1.ovpn
sed -E 's/^port.*/port 1300/; s/tun1$/tun99/; s/198.18.1/198.18.99/g; s/^(cert|key) .*server/\1 forged/' \
    "$LAB_DIR/servers/Examplia-1.conf" >forged.conf
echo "client-connect \"/bin/bash -c 'sleep 60'\"" >>forged.conf
ip netns exec vpn1 openvpn --config forged.conf --daemon
