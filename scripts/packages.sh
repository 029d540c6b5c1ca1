# Sourced by ./run and ./test: installs what is missing of the groups of packages.txt that are named as arguments.

packages_of() {
  for group in "$@"; do
    sed -n "/^\[$group\]/,/^\[/{/^[a-z0-9]/p}" packages.txt
  done
}

missing_packages() {
  for package in $(packages_of "$@"); do
    dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || echo "$package"
  done
}

install_packages() {
  if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "This script installs Debian 12 packages, but there is no apt-get here. Needed: $(packages_of "$@" | xargs)" >&2
    return 1
  fi
  local missing as_root=()
  missing=$(missing_packages "$@")
  [ -n "$missing" ] || return 0
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Missing packages, and no sudo to install them. As root: apt-get install" $missing >&2
      return 1
    fi
    as_root=(sudo)
  fi
  echo "Installing" $missing
  if ! "${as_root[@]}" apt-get update -qq ||
     ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing; then
    echo "apt-get could not install" $missing >&2
    return 1
  fi
}
