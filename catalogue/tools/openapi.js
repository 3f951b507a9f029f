export function openApi() { return '{}\n'; }
