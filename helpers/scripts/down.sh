#!/bin/sh
exec "${0%/*}/network" down "$@"
