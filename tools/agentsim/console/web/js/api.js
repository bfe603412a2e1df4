// The console's HTTP API. Every call is same-origin and carries the access cookie.

export class ApiError extends Error {
  constructor(status, message) {
    super(message);
    this.status = status;
  }
}

async function answer(response) {
  const text = await response.text();
  let body = null;
  try {
    body = text ? JSON.parse(text) : null;
  } catch {
    body = null;
  }
  if (!response.ok) {
    const message = body && body.error ? body.error : `${response.status} ${response.statusText}`;
    throw new ApiError(response.status, message);
  }
  return body;
}

export async function getJson(path) {
  return answer(await fetch(path, { cache: 'no-store', credentials: 'same-origin' }));
}

export async function postJson(path, document) {
  return answer(await fetch(path, {
    method: 'POST',
    cache: 'no-store',
    credentials: 'same-origin',
    headers: { 'Content-Type': 'application/json' },
    body: JSON.stringify(document ?? {}),
  }));
}

export const commandPath = (id, operation) =>
  `/api/commands/${encodeURIComponent(id)}/${operation}`;

export const sleep = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

// Makes an element with attributes and children; strings become text.
export function element(tag, attributes = {}, ...children) {
  const node = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (value === undefined || value === null || value === false) continue;
    if (name === 'class') node.className = value;
    else if (name === 'text') node.textContent = value;
    else if (name.startsWith('on')) node.addEventListener(name.slice(2), value);
    else node.setAttribute(name, value === true ? '' : value);
  }
  for (const child of children.flat()) {
    if (child === null || child === undefined || child === false) continue;
    node.append(typeof child === 'string' ? document.createTextNode(child) : child);
  }
  return node;
}

export function formatBytes(count) {
  if (count < 1024) return `${count} B`;
  if (count < 1024 * 1024) return `${(count / 1024).toFixed(1)} KiB`;
  if (count < 1024 ** 3) return `${(count / 1024 / 1024).toFixed(1)} MiB`;
  return `${(count / 1024 ** 3).toFixed(2)} GiB`;
}
