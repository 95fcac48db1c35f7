# shellcheck shell=bash
ensure_image() { :; }
